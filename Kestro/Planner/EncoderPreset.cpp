#include "Kestro/Planner/EncoderPreset.h"

#include <algorithm>

#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/FFWrapper/EncoderNameFromCodecId.h"
#include "Kestro/Planner/Domain.h"
#include "Kestro/Planner/EncoderOptions.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/RateControl.h"
#include "Kestro/Planner/Tree.h"

namespace Kestro::Planner {
namespace {

using Conf::IFormatCodec;
using Conf::IFormatCodecVideo;
using Core::Property;
using Core::PropertyValueToString;

// What a user is told to try where a quality is missing.
constexpr int kUsualQuality = 50;

[[noreturn]] void ExplainFailure(const PresetStream& stream, const Requirements& requirements,
                                 const StreamSettings& settings, const std::string& message) {
    const std::string& node = stream.kind->codecKey;
    const Property& preset = stream.settings[node];
    const std::string& codecId = preset[IFormatCodec::TAG_CODEC_ID].GetString();
    if (codecId != stream.codecId) {
        throw NotAcceptable({.code = ProblemCode::ValueNotAccepted,
                             .message = message,
                             .path = settings.UserPath(Below(node, IFormatCodec::TAG_CODEC_ID)),
                             .value = codecId,
                             .allowed = {stream.codecId},
                             .cause = "the settings are for another codec",
                             .wayOut = "take a preset for " + stream.codecId + ", or leave out " + stream.chosen->by});
    }
    Property tree;
    tree.SetChild(node, preset);
    const auto requirementOn = [&](const std::string& tag) {
        const std::string path = Below(node, tag);
        return std::ranges::find_if(requirements, [&](const Requirement& requirement) {
            return requirement.path == path && !requirement.rule;
        });
    };
    const auto mode = requirementOn(IFormatCodec::TAG_BITRATE_MODE);
    if (mode != requirements.end() && mode->Applies(tree) && !mode->Accepts(tree.ChildByPath(mode->path))) {
        RefuseValue(*mode, tree.ChildByPath(mode->path), settings.UserPath(mode->path), message);
    }
    const auto quality = requirementOn(IFormatCodec::TAG_QUALITY);
    if (quality != requirements.end() && !preset.ChildExists(IFormatCodec::TAG_QUALITY)) {
        const std::string path = settings.UserPath(quality->path);
        throw NotAcceptable(
            {.code = ProblemCode::MissingSetting,
             .message = message,
             .path = path,
             .allowed = AllowedValues(DescribeDomain(*quality->constraint)),
             .cause = quality->InWords(),
             .changes = {{path, PropertyValueToString(quality->Corrected(Property({}, kUsualQuality)))}}});
    }
    throw NotAcceptable({.code = ProblemCode::ValueNotAccepted, .message = message, .path = settings.UserPath(node)});
}

/// Why the encoder's own bitrate is what it is.
std::string BitrateReason(Conf::StreamType type, const Property& codec) {
    std::string reason = "the usual one";
    if (type == Conf::StreamType::Video) {
        reason += " for " + PropertyValueToString(codec[IFormatCodecVideo::TAG_WIDTH]) + " x " +
                  PropertyValueToString(codec[IFormatCodecVideo::TAG_HEIGHT]) + " at " +
                  PropertyValueToString(codec[IFormatCodecVideo::TAG_FPS]) + " frames/s";
    }
    if (TextAt(codec, IFormatCodec::TAG_BITRATE_MODE) == IFormatCodec::TAG_BITRATE_MODE_VBR) {
        reason += ", quality " + PropertyValueToString(codec[IFormatCodec::TAG_QUALITY]);
    }
    return reason;
}

}  // namespace

void ApplyEncoderPreset(const PresetStream& stream, bool isComplete, const Conf::IDataHelper& encoder,
                        const Requirements& requirements, StreamSettings& settings) {
    const std::string& mode = IFormatCodec::TAG_BITRATE_MODE;
    const std::string& bitrate = IFormatCodec::TAG_BITRATE;
    const std::string ofDefault = "the default of " + stream.codecId;
    Property preset = stream.settings[stream.kind->codecKey];
    const Property defaults = encoder.GetDefaultSettings();
    const bool isVideo = stream.kind->type == Conf::StreamType::Video;
    const bool isOwn = preset[IFormatCodec::TAG_CODEC_ID].GetString() == stream.codecId;
    if (isOwn && !(isVideo && CompleteRateControl(stream, encoder, requirements, settings, preset))) {
        const auto complete = [&](const std::string& tag) {
            if (preset.ChildExists(tag) || !defaults.ChildExists(tag)) return;
            preset.SetChild(tag, defaults[tag]);
            // Otherwise defaults are what was asked for.
            if (isComplete) settings.Set(tag, defaults[tag], Origin::Default, ofDefault);
        };
        const bool isOpen = !preset.ChildExists(mode) || !isComplete;
        complete(mode);
        const std::string chosen = TextAt(preset, mode);
        if (chosen == IFormatCodec::TAG_BITRATE_MODE_CBR) complete(bitrate);
        if (chosen == IFormatCodec::TAG_BITRATE_MODE_VBR && isOpen) complete(IFormatCodec::TAG_QUALITY);
    }

    const Property before = settings.Codec();
    Property codec = before;
    try {
        encoder.ApplyPresetSettings(preset, codec);
    } catch (const Exception& exception) {
        ExplainFailure(stream, requirements, settings, exception.what());
    }
    settings.Take(codec, Origin::Preset);
    // What the encoder makes of a rate control that leaves the bitrate to it.
    const bool isAutomatic = TextAt(preset, mode) == IFormatCodec::TAG_BITRATE_MODE_CBR_AUTO;
    const auto* record = FFWrapper::EncoderRecord::Find(FFWrapper::EncoderNameFromCodecId(stream.codecId));
    for (const std::string* tag : {&mode, &bitrate}) {
        const Property* was = preset.ChildExists(*tag) ? &preset[*tag] : before.FindByPath(*tag);
        if (was == nullptr || !codec.ChildExists(*tag)) continue;
        if (tag == &bitrate && IsByQuality(codec, record)) continue;
        const Property* asked = stream.settings[stream.kind->codecKey].FindByPath(*tag);
        if (tag == &mode && asked != nullptr && *asked == codec[*tag]) continue;
        const bool isSame = *was == codec[*tag];
        if (isSame && (tag == &mode || !isAutomatic)) continue;
        std::string reason = "constant, and the bitrate is left to the program";
        if (isSame) {
            reason = ofDefault;
        } else if (tag == &bitrate) {
            reason = BitrateReason(stream.kind->type, codec);
        }
        settings.Set(*tag, codec[*tag], Origin::Automatic, reason);
    }
    MoveAskedToNearest(stream.kind->codecKey, requirements, settings);
}

}  // namespace Kestro::Planner
