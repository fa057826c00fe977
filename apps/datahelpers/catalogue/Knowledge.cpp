#include "catalogue/Knowledge.h"

extern "C" {
#include <libavutil/avutil.h>
}

#include <algorithm>
#include <map>

#include "Kestro/Conf/CodecKinds.h"
#include "Kestro/Conf/IFormatCodec.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/FFWrapper/EncoderNameFromCodecId.h"
#include "Kestro/FFWrapper/EverydayNames.h"
#include "Kestro/FFWrapper/MuxerNames.h"
#include "Kestro/Planner/Domain.h"
#include "Kestro/Planner/Fits.h"

namespace App::Catalogue {
namespace {

using Kestro::Conf::IFormatCodec;
using Kestro::Conf::IPreset;
using Kestro::Conf::StreamRecord;
using Kestro::Conf::StreamType;
using Kestro::Core::Property;
using Planner::Fit;

/// A kind's codec ids: those that containers store, then those that only helpers have ("auto").
std::vector<std::string> CodecIds(StreamType type) {
    const auto known = type == StreamType::Video   ? Kestro::Conf::VideoCodecIds()
                       : type == StreamType::Audio ? Kestro::Conf::AudioCodecIds()
                                                   : Kestro::Conf::SubtitleCodecIds();
    std::vector<std::string> ids(known.begin(), known.end());
    if (!StreamRecord::Find(type).HasHelpers()) return ids;
    for (const std::string& name : Planner::HelperNames(Planner::CodecsOf(type))) {
        if (std::ranges::find(ids, name) == ids.end()) ids.push_back(name);
    }
    return ids;
}

std::vector<Codec> AllCodecs() {
    std::vector<Codec> codecs;
    for (const StreamRecord& kind : StreamRecord::All()) {
        std::vector<std::string> helpers;
        if (kind.HasHelpers()) helpers = Planner::HelperNames(Planner::CodecsOf(kind.type));
        for (const std::string& id : CodecIds(kind.type)) {
            Codec codec{.kind = &kind,
                        .id = id,
                        .encoder = Kestro::FFWrapper::EncoderNameFromCodecId(id),
                        .also = Kestro::FFWrapper::EverydayNamesOfCodec(id),
                        .sheet = {},
                        .isLeftToProgram = id == IFormatCodec::CODEC_ID_AUTO};
            if (std::ranges::find(helpers, id) != helpers.end()) {
                codec.sheet = ShowHelper(Planner::CodecsOf(kind.type), id, false);
            }
            codecs.push_back(std::move(codec));
        }
    }
    return codecs;
}

bool IsOfferedBy(const Container& container, const Codec& codec) {
    const auto found = container.sheet.constraints.find(codec.kind->CodecIdPath());
    return found != container.sheet.constraints.end() && found->second->IsValid(Property({}, codec.id));
}

Cell MakeCell(const Container& container, const Codec& codec, const Fit& fit) {
    const bool isOffered = IsOfferedBy(container, codec);
    if (!fit.fits) return {.standing = isOffered ? Standing::Doubtful : Standing::Refused, .reason = fit.reason};
    if (!isOffered) return {.standing = Standing::Stored};
    const bool isDefault = container.DefaultCodec(*codec.kind) == codec.id;
    return {.standing = isDefault ? Standing::Default : Standing::Offered};
}

/// What the trials of a codec in a container came to. Where one of a film fails, its other codec may be at fault: one
/// that succeeds tells more.
void AddProof(const Proof& proof, Knowledge& knowledge) {
    std::map<std::pair<std::string, std::string>, Cell*> cells;
    for (Container& container : knowledge.containers) {
        for (std::size_t i = 0; i < container.cells.size(); ++i) {
            cells[{container.name, knowledge.codecs[i].id}] = &container.cells[i];
        }
    }
    for (const ProofRow& row : proof.rows) {
        const bool isProven = row.result == "proven";
        if ((!isProven && row.result != "contradicts") || row.hasSettings) continue;
        for (const std::string& codec : {row.video, row.audio, row.subtitles}) {
            const auto found = cells.find({row.container, codec});
            if (found == cells.end() || found->second->proof == "proven") continue;
            // Only a copy shows that what is not encoded is kept.
            if ((row.about == "copy") != (found->second->standing == Standing::Stored)) continue;
            found->second->proof = row.result;
            found->second->proofReason = isProven ? std::string() : row.why;
        }
    }
}

struct StandingWords {
    const char* name;
    const char* symbol;
    const char* words;
};

constexpr StandingWords kStandings[] = {
    {"default", "\u2605", "what the container takes where nobody chooses"},
    {"offered", "\u2713", "streams are encoded with it for this container"},
    {"doubtful", "!", "offered, but the installed FFmpeg does not write it into this container"},
    {"stored", "\u25CB", "not encoded for this container, but its muxer keeps a stream that has it already"},
    {"refused", "\u00B7", "this container does not take it"},
};

}  // namespace

std::optional<int64_t> Container::Limit(StreamType type) const {
    using Kestro::Conf::IFormatFile;
    const std::string& tag = type == StreamType::Video   ? IFormatFile::TAG_LIMITS_VIDEO
                             : type == StreamType::Audio ? IFormatFile::TAG_LIMITS_AUDIO
                                                         : IFormatFile::TAG_LIMITS_SUBTITLE;
    const Property* limit = sheet.defaults.FindByPath(IFormatFile::TAG_LIMITS + Property::SEPARATOR + tag);
    return limit != nullptr ? std::optional(limit->GetInt64()) : std::nullopt;
}

std::string Container::DefaultCodec(const StreamRecord& kind) const {
    for (const Property& stream : sheet.defaults[IPreset::KEY_STREAMS]) {
        const Property* codec = stream.FindByPath(kind.codecKey + Property::SEPARATOR + IFormatCodec::TAG_CODEC_ID);
        if (codec != nullptr) return codec->GetString();
    }
    return {};
}

Knowledge GatherKnowledge(const std::string& proofFile) {
    Knowledge knowledge;
    if (!proofFile.empty()) knowledge.proof = ReadProof(proofFile);
    knowledge.ffmpeg = av_version_info();
    knowledge.codecs = AllCodecs();
    for (const std::string& name : Planner::HelperNames(Planner::kFilters)) {
        knowledge.filters.push_back(ShowHelper(Planner::kFilters, name, false));
    }
    for (const std::string& name : Planner::HelperNames(Planner::kFormats)) {
        const std::string muxer = Kestro::FFWrapper::MuxerName(name);
        Container container{.name = name,
                            .muxer = Kestro::FFWrapper::MuxerExists(muxer) ? muxer : std::string(),
                            .extension = Kestro::FFWrapper::FileExtension(name),
                            .also = Kestro::FFWrapper::EverydayNamesOfContainer(name),
                            .isPicture = Kestro::FFWrapper::IsImageMuxer(muxer),
                            .sheet = ShowHelper(Planner::kFormats, name, false),
                            .cells = {}};
        std::map<std::string, Fit> fits;
        for (Fit& fit : Planner::FindFits({}, name)) fits[fit.codec] = std::move(fit);
        for (const Codec& codec : knowledge.codecs) {
            const auto fit = fits.find(codec.id);
            const Fit none{.reason = "no container stores it"};
            container.cells.push_back(MakeCell(container, codec, fit != fits.end() ? fit->second : none));
        }
        knowledge.containers.push_back(std::move(container));
    }
    if (knowledge.proof) AddProof(*knowledge.proof, knowledge);
    return knowledge;
}

const char* Name(Standing standing) { return kStandings[static_cast<std::size_t>(standing)].name; }
const char* InWords(Standing standing) { return kStandings[static_cast<std::size_t>(standing)].words; }
const char* Symbol(Standing standing) { return kStandings[static_cast<std::size_t>(standing)].symbol; }

}  // namespace App::Catalogue
