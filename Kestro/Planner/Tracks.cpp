#include "Kestro/Planner/Tracks.h"

#include <algorithm>
#include <charconv>

#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Subtitles.h"
#include "Kestro/Planner/Text.h"
#include "Kestro/Planner/Tree.h"

namespace Kestro::Planner {
namespace {

using Conf::IFormatFile;
using Conf::IPreset;
using Conf::StreamRecord;
using Conf::StreamType;
using Core::Property;

using Sources = std::vector<const MediaStream*>;

std::vector<std::string> Words(const std::string& list) {
    std::vector<std::string> words;
    for (std::size_t begin = 0; begin <= list.size();) {
        const std::size_t end = std::min(list.find(',', begin), list.size());
        words.push_back(list.substr(begin, end - begin));
        begin = end + 1;
    }
    return words;
}

/// "1 (eng)", as a choice names it.
std::string NameOf(const MediaStream& source, std::size_t place) {
    std::string name = std::to_string(place + 1);
    if (!source.language.empty()) name += " (" + Printable(source.language) + ")";
    return name;
}

/// The streams that a word means: a place, counted from 1, or a language. Throws where there is none.
Sources Meant(const std::string& word, const Sources& all, const PresetStream& wanted) {
    std::size_t place = 0;
    const auto read = std::from_chars(word.data(), word.data() + word.size(), place);
    if (read.ec == std::errc() && read.ptr == word.data() + word.size() && place >= 1 && place <= all.size()) {
        return {all[place - 1]};
    }
    Sources meant;
    for (const MediaStream* source : all) {
        if (!word.empty() && source->language == word) meant.push_back(source);
    }
    if (!meant.empty()) return meant;
    std::vector<std::string> names;
    for (std::size_t i = 0; i < all.size(); ++i) names.push_back(NameOf(*all[i], i));
    throw NotAcceptable({.code = ProblemCode::NoSuchStream,
                         .message = "The input has no " + wanted.kind->typeId + " track \"" + Printable(word) + "\".",
                         .path = Below(wanted.path, PresetStream::kTracks),
                         .value = word,
                         .allowed = names});
}

/// Those of the sources that are among the chosen, in the file's order.
Sources Chosen(const Sources& all, const PresetStream& wanted) {
    if (wanted.tracks == PresetStream::kNoTracks) return {};
    if (wanted.tracks.empty() || wanted.tracks == PresetStream::kAllTracks) return all;
    Sources chosen;
    for (const std::string& word : Words(wanted.tracks)) {
        for (const MediaStream* source : Meant(word, all, wanted)) chosen.push_back(source);
    }
    Sources inOrder;
    std::ranges::copy_if(all, std::back_inserter(inOrder),
                         [&](const MediaStream* source) { return std::ranges::find(chosen, source) != chosen.end(); });
    return inOrder;
}

class Chooser {
public:
    Chooser(const CheckedPreset& preset, const MediaInfo& input, const Property& format, const std::string& muxer)
        : preset_(preset), input_(input), format_(format), muxer_(muxer) {}

    Tracks Choose() {
        for (const PresetStream& wanted : preset_.streams) Add(wanted);
        for (const MediaStream& stream : input_.streams) {
            if (!IsTaken(stream)) tracks_.left.emplace(stream.index, WhyLeft(stream));
        }
        return std::move(tracks_);
    }

private:
    static bool IsOfKind(const MediaStream& stream, const PresetStream& wanted) {
        return stream.type == wanted.kind->type && stream.isCover == WantsCover(wanted);
    }
    bool IsTaken(const MediaStream& stream) const {
        return std::ranges::any_of(tracks_.taken, [&](const Track& track) { return track.source == &stream; });
    }

    void Add(const PresetStream& wanted) {
        Sources all;
        for (const MediaStream& stream : input_.streams) {
            if (IsOfKind(stream, wanted) && IsUsable(stream)) all.push_back(&stream);
        }
        Sources sources = Chosen(all, wanted);
        std::erase_if(sources,
                      [&](const MediaStream* source) { return IsTaken(*source) || !CanBeMade(*source, wanted); });
        const auto isLikeIt = [&](const PresetStream& other) {
            return other.kind == wanted.kind && WantsCover(other) == WantsCover(wanted);
        };
        const bool standsForAll = !wanted.tracks.empty() || std::ranges::count_if(preset_.streams, isLikeIt) == 1;
        if (!standsForAll) {
            sources.resize(std::min<std::size_t>(sources.size(), 1));
        } else if (wanted.tracks.empty()) {
            KeepWhatFits(sources, wanted);
        }
        for (const MediaStream* source : sources) tracks_.taken.push_back({&wanted, source});
        if (!sources.empty() || wanted.isImplied || wanted.tracks == PresetStream::kNoTracks) return;
        tracks_.unmatched.push_back(wanted.path + " is dropped: the input has no " +
                                    (WantsCover(wanted) ? "cover picture" : wanted.kind->typeId) + " for it.");
    }

    bool CanBeMade(const MediaStream& source, const PresetStream& wanted) {
        if (wanted.kind->type != StreamType::Subtitle) return true;
        const SubtitleWay way = FindSubtitleWay(preset_, wanted, source, muxer_);
        if (way.obstacle.empty()) return true;
        tracks_.left.emplace(source.index, way.obstacle);
        return false;
    }

    void KeepWhatFits(Sources& sources, const PresetStream& wanted) {
        const int64_t limit = StreamLimit(preset_, format_, wanted.kind->type);
        const auto isLikeIt = [&](const Track& track) { return track.wanted->kind == wanted.kind; };
        const auto room =
            static_cast<std::size_t>(std::max<int64_t>(limit - std::ranges::count_if(tracks_.taken, isLikeIt), 0));
        if (limit < 0 || sources.size() <= room) return;
        Sources byRank = sources;
        std::stable_partition(byRank.begin(), byRank.end(),
                              [](const MediaStream* source) { return source->isDefault; });
        for (std::size_t i = room; i < byRank.size(); ++i) {
            tracks_.left.emplace(byRank[i]->index, "the container " + preset_.container + " takes " +
                                                       std::to_string(limit) + " " + wanted.kind->typeId +
                                                       (limit == 1 ? " stream" : " streams"));
        }
        std::erase_if(sources, [&](const MediaStream* source) { return tracks_.left.contains(source->index); });
    }

    std::string WhyLeft(const MediaStream& stream) const {
        const std::string container = "the container " + preset_.container;
        if (!stream.type) return container + (stream.isAttachment ? " keeps no files" : " keeps nothing but media");
        if (!IsUsable(stream)) return "it is damaged";
        bool isListed = false;
        for (const PresetStream& wanted : preset_.streams) {
            if (!IsOfKind(stream, wanted)) continue;
            if (!wanted.tracks.empty()) return "other tracks are asked for";
            isListed = true;
        }
        if (isListed) return "the preset has one stream for each that it takes";
        const StreamRecord& kind = StreamRecord::Find(*stream.type);
        if (stream.isCover) return container + " takes no cover pictures";
        const bool isTaken = preset_.format->GetDefaultSettings().FindByPath(kind.CodecIdPath()) != nullptr;
        return (isTaken && preset_.isFromText ? "the preset has" : container + " takes") + " no " + kind.typeId +
               " stream";
    }

    const CheckedPreset& preset_;
    const MediaInfo& input_;
    const Property& format_;
    const std::string& muxer_;
    Tracks tracks_;
};

}  // namespace

void CompleteTracks(const Preset& preset, const Property& defaults, std::vector<PresetStream>& streams) {
    const StreamRecord& subtitles = StreamRecord::Find(StreamType::Subtitle);
    const auto hasStreamOf = [&](StreamType type) {
        return std::ranges::any_of(
            streams, [type](const PresetStream& stream) { return stream.kind->type == type && !WantsCover(stream); });
    };
    if (hasStreamOf(StreamType::Video) && !hasStreamOf(StreamType::Subtitle) &&
        defaults.FindByPath(subtitles.CodecIdPath()) != nullptr) {
        streams.push_back({.kind = &subtitles,
                           .path = IPreset::KEY_STREAMS + IPreset::INDEX + subtitles.typeId,
                           .settings = {},
                           .chosenBecause = {},
                           .chosen = nullptr,
                           .isImplied = true});
    }
    for (const auto& [type, tracks] : preset.ChosenTracks()) {
        if (tracks != PresetStream::kNoTracks && !hasStreamOf(type)) {
            throw NotAcceptable(
                {.code = ProblemCode::NoSuchStream,
                 .message = "There is no " + StreamRecord::Find(type).typeId + " stream to choose tracks for.",
                 .value = tracks});
        }
        for (PresetStream& stream : streams) {
            if (stream.kind->type == type && !WantsCover(stream)) stream.tracks = tracks;
        }
    }
}

bool WantsCover(const PresetStream& stream) {
    return Flag(stream.settings, Below(stream.kind->codecKey, Conf::IFormatCodecVideo::TAG_COVER_FLAG));
}

std::string LimitPath(StreamType type) {
    const std::string& tag = type == StreamType::Video   ? IFormatFile::TAG_LIMITS_VIDEO
                             : type == StreamType::Audio ? IFormatFile::TAG_LIMITS_AUDIO
                                                         : IFormatFile::TAG_LIMITS_SUBTITLE;
    return Below(IFormatFile::TAG_LIMITS, tag);
}

int64_t StreamLimit(const CheckedPreset& preset, const Property& formatSettings, StreamType type) {
    const std::string path = LimitPath(type);
    const auto most = Integer(preset.format->GetDefaultSettings(), path);
    const auto asked = Integer(formatSettings, path);
    return most && asked ? std::min(*most, *asked) : -1;
}

Tracks ChooseTracks(const CheckedPreset& preset, const MediaInfo& input, const Property& formatSettings,
                    const std::string& muxer) {
    return Chooser(preset, input, formatSettings, muxer).Choose();
}

}  // namespace Kestro::Planner
