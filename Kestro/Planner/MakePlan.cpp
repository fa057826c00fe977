#include "Kestro/Planner/MakePlan.h"

#include <algorithm>

#include "Kestro/Conf/DataHelpers/GlobalHeaderFunctions.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/FFWrapper/EncoderNameFromCodecId.h"
#include "Kestro/FFWrapper/MuxerNames.h"
#include "Kestro/Planner/CheckedPreset.h"
#include "Kestro/Planner/Fits.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/StreamPlanner.h"
#include "Kestro/Planner/Text.h"
#include "Kestro/Planner/Tree.h"

namespace Kestro::Planner {
namespace {

using Kestro::Conf::IFormatCodecVideo;
using Kestro::Conf::IFormatFile;
using Kestro::Conf::IPreset;
using Kestro::Conf::StreamRecord;
using Kestro::Conf::StreamType;
using Kestro::Core::Property;

bool WantsCover(const PresetStream& stream) {
    const Property* flag =
        stream.settings.FindByPath(stream.kind->codecKey + Property::SEPARATOR + IFormatCodecVideo::TAG_COVER_FLAG);
    return flag != nullptr && flag->GetBool();
}

/// The first stream of the input that is of the wanted kind, not yet taken and not without a size or sample rate, as
/// damaged ones are; null when there is none left.
const MediaStream* TakeSource(const MediaInfo& input, const PresetStream& wanted, const Plan& plan) {
    const bool cover = WantsCover(wanted);
    for (const MediaStream& stream : input.streams) {
        const auto isThis = [&](const PlannedStream& planned) { return planned.source.index == stream.index; };
        if (IsUsable(stream) && stream.type == wanted.kind->type && stream.isCover == cover &&
            std::ranges::none_of(plan.streams, isThis)) {
            return &stream;
        }
    }
    return nullptr;
}

void NoteLeftStreams(Plan& plan) {
    for (const MediaStream& stream : plan.input.streams) {
        const auto isThis = [&](const PlannedStream& planned) { return planned.source.index == stream.index; };
        if (std::ranges::any_of(plan.streams, isThis)) continue;
        plan.notes.push_back("Stream " + std::to_string(stream.index) + " of the input (" + TypeInWords(stream) + ", " +
                             stream.codec + ") is left out.");
    }
}

void CheckLimits(const CheckedPreset& preset, const Plan& plan) {
    const Property defaults = preset.format->GetDefaultSettings();
    for (const StreamRecord& kind : StreamRecord::Converted()) {
        const std::string& tag =
            kind.type == StreamType::Video ? IFormatFile::TAG_LIMITS_VIDEO : IFormatFile::TAG_LIMITS_AUDIO;
        const auto isThis = [&kind](const PlannedStream& stream) { return stream.kind == &kind; };
        const auto count = std::ranges::count_if(plan.streams, isThis);
        const std::string path = IFormatFile::TAG_LIMITS + Property::SEPARATOR + tag;
        const Property* most = defaults.FindByPath(path);
        const Property* asked = plan.FormatSettings().FindByPath(path);
        if (most == nullptr || asked == nullptr) continue;
        const int64_t limit = std::min(most->GetInt64(), asked->GetInt64());
        if (count <= limit) continue;
        throw NotAcceptable(
            {.code = ProblemCode::TooManyStreams,
             .message = "Too many " + kind.typeId + " streams for the container " + preset.container + ".",
             .path = IPreset::KEY_FORMAT + Property::SEPARATOR + path,
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

Plan Settle(const MediaInfo& input, const Preset& asked) {
    const CheckedPreset preset = Checked(asked);
    Plan plan{.input = input,
              .container = preset.container,
              .muxer = {},
              .globalHeader = Kestro::Conf::FormatHasGlobalHeader(preset.container),
              .settings = {},
              .streams = {},
              .choices = {},
              .corrections = {},
              .notes = {}};
    plan.settings.SetChild(IPreset::KEY_FORMAT, FormatNode(preset));
    plan.settings.SetChild(IPreset::KEY_STREAMS);
    plan.muxer = FFWrapper::MuxerName(plan.FormatSettings());

    for (const PresetStream& stream : preset.streams) {
        if (!stream.kind->IsConverted()) {
            plan.notes.push_back(stream.path + " is passed over: subtitles are not converted.");
            continue;
        }
        const MediaStream* source = TakeSource(plan.input, stream, plan);
        if (source == nullptr) {
            plan.notes.push_back(stream.path + " is dropped: the input has no " +
                                 (WantsCover(stream) ? "cover picture" : stream.kind->typeId) + " for it.");
            continue;
        }
        const Property settled = StreamPlanner(preset, stream, *source, plan).Settle();
        Property& streams = plan.settings[IPreset::KEY_STREAMS];
        streams.SetChild(std::to_string(streams.Count()), settled);
        const Property& codec = settled[stream.kind->codecKey];
        plan.streams.push_back({.kind = stream.kind,
                                .source = *source,
                                .path = stream.path,
                                .codecId = stream.codecId,
                                .encoder = Kestro::FFWrapper::EncoderNameFromCodecId(stream.codecId),
                                .globalHeader = Kestro::Conf::CodecHasGlobalHeader(stream.codecId),
                                .isSupported = MuxerTakes(plan.muxer, codec)});
    }
    if (plan.streams.empty()) {
        throw NotAcceptable(
            {.code = ProblemCode::NothingToConvert,
             .message = "Nothing of " + Printable(input.path) + " is left to convert. " + Join(plan.notes, " "),
             .path = IPreset::KEY_STREAMS});
    }
    CheckLimits(preset, plan);
    if (plan.IsPicture()) {
        plan.notes.push_back("The container " + preset.container +
                             " holds one picture; it is the first of the input, unless a sequence is asked for.");
    }
    NoteLeftStreams(plan);
    return plan;
}

}  // namespace

Plan MakePlan(const MediaInfo& input, const Preset& preset) {
    try {
        return Settle(input, preset);
    } catch (const NotAcceptable&) {
        throw;
    } catch (const Exception& exception) {
        // The library's own words, where no step had better ones.
        throw NotAcceptable({.code = ProblemCode::ValueNotAccepted, .message = exception.what()});
    }
}

}  // namespace Kestro::Planner
