#include "Kestro/Planner/MakePlan.h"

#include <algorithm>

#include "Kestro/Conf/DataHelpers/GlobalHeaderFunctions.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/FFWrapper/EncoderNameFromCodecId.h"
#include "Kestro/FFWrapper/EncoderRecord.h"
#include "Kestro/FFWrapper/MuxerNames.h"
#include "Kestro/FFWrapper/MuxerRecord.h"
#include "Kestro/Planner/CheckedPreset.h"
#include "Kestro/Planner/Fits.h"
#include "Kestro/Planner/FitToSize.h"
#include "Kestro/Planner/FrameRateRange.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Pixels.h"
#include "Kestro/Planner/StreamCopy.h"
#include "Kestro/Planner/StreamPlanner.h"
#include "Kestro/Planner/Subtitles.h"
#include "Kestro/Planner/Text.h"
#include "Kestro/Planner/Tracks.h"
#include "Kestro/Planner/Tree.h"

namespace Kestro::Planner {
namespace {

using Kestro::Conf::IPreset;
using Kestro::Conf::StreamRecord;
using Kestro::Conf::StreamType;
using Kestro::Core::Property;

void CheckLimits(const CheckedPreset& preset, const Plan& plan) {
    for (const StreamRecord& kind : StreamRecord::All()) {
        const auto isThis = [&kind](const PlannedStream& stream) { return stream.kind == &kind; };
        const auto count = std::ranges::count_if(plan.streams, isThis);
        const int64_t limit = StreamLimit(preset, plan.FormatSettings(), kind.type);
        if (limit < 0 || count <= limit) continue;
        throw NotAcceptable(
            {.code = ProblemCode::TooManyStreams,
             .message = "Too many " + kind.typeId + " streams for the container " + preset.container + ".",
             .path = Below(IPreset::KEY_FORMAT, LimitPath(kind.type)),
             .value = std::to_string(count),
             .allowed = {"up to " + std::to_string(limit)}});
    }
}

Property FormatNode(const CheckedPreset& preset) {
    Property format = preset.format->GetDefaultSettings();
    format.RemoveChild(IPreset::KEY_STREAMS);
    Override(format, preset.formatSettings);
    return format;
}

/// One output stream: its settings go into the plan's, in the order of its streams.
void AddStream(Plan& plan, PlannedStream stream, const Property& settings) {
    Property& streams = plan.settings[IPreset::KEY_STREAMS];
    streams.SetChild(std::to_string(streams.Count()), settings);
    stream.isSupported = MuxerTakes(plan.muxer, settings[stream.kind->codecKey]);
    plan.streams.push_back(std::move(stream));
}

void AddCopy(Plan& plan, const StreamRecord& kind, const MediaStream& source, const std::string& path,
             const std::string& codecId) {
    AddStream(plan,
              {.kind = &kind,
               .source = source,
               .path = path,
               .codecId = codecId,
               .isCopied = true,
               .encoder = {},
               .globalHeader = false,
               .isSupported = false},
              CopiedNode(kind, source, codecId));
}

void AddSubtitles(const CheckedPreset& preset, const Track& track, Plan& plan) {
    const SubtitleWay way = FindSubtitleWay(preset, *track.wanted, *track.source, plan.muxer);
    AddCopy(plan, *track.wanted->kind, *track.source, track.wanted->path, way.codecId);
    if (way.isCopied) return;
    plan.streams.back().isCopied = false;
    plan.streams.back().encoder = FFWrapper::EncoderNameFromCodecId(way.codecId);
}

std::string CodecPath(const PresetStream& stream) {
    return Below(Below(stream.path, stream.kind->codecKey), Conf::IFormatCodec::TAG_CODEC_ID);
}

/// Whether the stream is copied; refused where that is asked for and cannot be done.
bool IsCopied(const CheckedPreset& preset, const Track& track, const Plan& plan) {
    if (!MayBeCopied(*track.wanted)) return false;
    const std::string obstacle = CopyObstacle(preset, *track.wanted, *track.source, plan);
    if (obstacle.empty() || !track.wanted->isCopy) return obstacle.empty();
    throw NotAcceptable({.code = ProblemCode::CodecNotTaken,
                         .message = "The " + track.wanted->kind->typeId + " cannot be copied: " + obstacle + ".",
                         .path = CodecPath(*track.wanted),
                         .value = Preset::kCopy,
                         .allowed = {Conf::IFormatCodec::CODEC_ID_AUTO},
                         .cause = obstacle,
                         .wayOut = "leave the codec to the program, or take another container"});
}

/// Sound that is stored without loss may still be stored in samples of fewer bits.
void NoteLostBits(const PresetStream& wanted, const MediaStream& source, const Property& settled, Account& account) {
    const Property* bits = settled[wanted.kind->codecKey].FindByPath(Conf::IFormatCodecAudio::TAG_BITS_PER_SAMPLE);
    if (!FFWrapper::IsAlwaysLossless(wanted.codecId) || bits == nullptr) return;
    const int64_t kept = bits->GetInt64();
    if (kept <= 0 || kept >= source.bitDepth) return;
    account.notes.push_back("The input's " + std::to_string(source.bitDepth) + " bits of each sample become " +
                            std::to_string(kept) + ", which is what " + wanted.codecId + " has here.");
}

void AddTrack(const CheckedPreset& preset, const Track& track, Plan& plan) {
    const PresetStream& wanted = *track.wanted;
    if (wanted.kind->type == StreamType::Subtitle) return AddSubtitles(preset, track, plan);
    if (IsCopied(preset, track, plan)) {
        AddCopy(plan, *wanted.kind, *track.source, wanted.path, track.source->codec);
        const std::string why = "the container " + preset.container + " takes it as it is in the input";
        Account account;
        if (!wanted.isCopy) account.choices.push_back({CodecPath(wanted), Preset::kCopy, why});
        plan.Add(account);
        return;
    }
    Property settled = StreamPlanner(preset, wanted, *track.source, plan).Settle();
    Account account;
    Pixels pixels;
    if (wanted.kind->type == StreamType::Audio) NoteLostBits(wanted, *track.source, settled, account);
    if (wanted.kind->type == StreamType::Video) {
        const std::string& fps = Conf::IFormatCodecVideo::TAG_FPS;
        const Property& codec = settled[wanted.kind->codecKey];
        CheckFrameRates(Below(Below(wanted.path, wanted.kind->codecKey), fps), track.source->fps,
                        codec[fps].GetRatio());
        pixels = PlanPixels(wanted, *track.source, plan.FormatSettings(), settled[wanted.kind->codecKey], account);
    }
    plan.Add(account);
    AddStream(plan,
              {.kind = wanted.kind,
               .source = *track.source,
               .path = wanted.path,
               .codecId = wanted.codecId,
               .isCopied = false,
               .encoder = FFWrapper::EncoderNameFromCodecId(wanted.codecId),
               .globalHeader = Kestro::Conf::CodecHasGlobalHeader(wanted.codecId),
               .isSupported = false,
               .pixels = pixels},
              settled);
}

/// What a container keeps beside the streams that presets are for: cover pictures, and files such as fonts.
void AddCompany(const CheckedPreset& preset, Tracks& tracks, Plan& plan) {
    const FFWrapper::MuxerRecord& muxer = FFWrapper::MuxerRecord::Find(plan.muxer);
    const bool hasOwnCovers = std::ranges::any_of(preset.streams, WantsCover);
    const auto keeps = [&](const MediaStream& stream) {
        if (stream.isAttachment) return muxer.hasAttachments;
        if (!stream.isCover || hasOwnCovers) return false;
        return muxer.hasCovers || (muxer.attachesCovers && !FFWrapper::CoverMediaType(stream.codec).empty());
    };
    for (const MediaStream& stream : plan.input.streams) {
        if (!tracks.left.contains(stream.index) || !keeps(stream)) continue;
        if (stream.isAttachment) {
            plan.attachments.push_back(stream.index);
        } else {
            const StreamRecord& video = StreamRecord::Find(StreamType::Video);
            const Property node = CopiedNode(video, stream, stream.codec);
            if (muxer.hasCovers && !MuxerTakes(plan.muxer, node[video.codecKey])) continue;
            AddCopy(plan, video, stream, "Covers", stream.codec);
        }
        tracks.left.erase(stream.index);
    }
}

/// Tells what of the input is not in the output, and why.
void NoteLosses(const CheckedPreset& preset, const Tracks& tracks, Plan& plan) {
    const FFWrapper::MuxerRecord& muxer = FFWrapper::MuxerRecord::Find(plan.muxer);
    // A preset of a container's defaults asks for no stream in particular.
    if (preset.isFromText) plan.notes.insert(plan.notes.end(), tracks.unmatched.begin(), tracks.unmatched.end());
    for (const MediaStream& stream : plan.input.streams) {
        const auto left = tracks.left.find(stream.index);
        if (left == tracks.left.end()) continue;
        plan.notes.push_back(InWords(stream) + " is left out: " + left->second + ".");
    }
    if (plan.input.chapters > 0 && !muxer.hasChapters) {
        plan.notes.push_back("The input's " + std::to_string(plan.input.chapters) +
                             " chapters are left out: the container " + preset.container + " keeps none.");
    }
    const bool hasLanguages = std::ranges::any_of(plan.streams, [](const PlannedStream& stream) {
        return !stream.source.language.empty() && stream.source.language != "und";
    });
    if (hasLanguages && !muxer.hasLanguages) {
        plan.notes.push_back("The languages of the streams are left out: the container " + preset.container +
                             " keeps none.");
    }
    for (const PlannedStream& stream : plan.streams) {
        if (!stream.source.isForced || muxer.hasForcedMarks) continue;
        plan.notes.push_back(InWords(stream.source) + " loses the mark that it is always shown: the container " +
                             preset.container + " keeps none.");
    }
}

Plan Settle(const MediaInfo& input, const Preset& asked) {
    const CheckedPreset preset = Checked(asked);
    Plan plan;
    plan.input = input;
    plan.container = preset.container;
    plan.globalHeader = Kestro::Conf::FormatHasGlobalHeader(preset.container);
    plan.sizeLimit = preset.sizeLimit;
    plan.settings.SetChild(IPreset::KEY_FORMAT, FormatNode(preset));
    plan.settings.SetChild(IPreset::KEY_STREAMS);
    plan.muxer = FFWrapper::MuxerName(plan.FormatSettings());

    Tracks tracks = ChooseTracks(preset, plan.input, plan.FormatSettings(), plan.muxer);
    for (const Track& track : tracks.taken) AddTrack(preset, track, plan);
    if (plan.streams.empty()) {
        throw NotAcceptable(
            {.code = ProblemCode::NothingToConvert,
             .message = "Nothing of " + Printable(input.path) + " is left to convert. " + Join(tracks.unmatched, " "),
             .path = IPreset::KEY_STREAMS});
    }
    CheckLimits(preset, plan);
    AddCompany(preset, tracks, plan);
    if (plan.IsPicture()) {
        plan.notes.push_back("The container " + preset.container +
                             " holds one picture; it is the first of the input, unless a sequence is asked for.");
    }
    NoteLosses(preset, tracks, plan);
    return plan;
}

}  // namespace

Plan MakePlan(const MediaInfo& input, const Preset& preset) {
    try {
        Plan plan = Settle(input, preset);
        if (!plan.sizeLimit) return plan;
        return FitToSize(plan, preset, [&input](const Preset& other) { return Settle(input, other); });
    } catch (const NotAcceptable&) {
        throw;
    } catch (const Exception& exception) {
        // The library's own words, where no step had better ones.
        throw NotAcceptable({.code = ProblemCode::ValueNotAccepted, .message = exception.what()});
    }
}

}  // namespace Kestro::Planner
