#include "Kestro/Planner/StreamCopy.h"

#include <algorithm>
#include <utility>

#include "Kestro/Conf/DiscRecord.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/FFWrapper/MuxerRecord.h"
#include "Kestro/Planner/Fits.h"
#include "Kestro/Planner/FitUnasked.h"
#include "Kestro/Planner/Requirement.h"
#include "Kestro/Planner/StreamSettings.h"
#include "Kestro/Planner/Tracks.h"
#include "Kestro/Planner/Tree.h"
#include "Kestro/Proc/FilterRecord.h"

namespace Kestro::Planner {
namespace {

using Conf::IFormatCodec;
using Conf::IFormatCodecAudio;
using Conf::IFormatCodecVideo;
using Conf::IPreset;
using Conf::StreamType;
using Core::Property;

/// Whether the muxer stores the stream: under the tag that it has in the input, or under one of the muxer's choice.
bool IsStored(const Plan& plan, const PresetStream& wanted, const MediaStream& source, const Property& codec) {
    // Without the mark of a copy, the library also tells whether FFmpeg reads such a file back.
    const bool isReadBack = MuxerTakes(plan.muxer, codec);
    if (WantsCover(wanted) || !isReadBack) return isReadBack;
    if (FFWrapper::MuxerRecord::Find(plan.muxer).namesCodecs) return true;
    Property copied = codec;
    copied.SetChild(IFormatCodec::TAG_LOSSLESS, true);
    copied.SetChild(IFormatCodec::TAG_MAIN_STREAM, true);
    const int64_t tags[] = {source.codecTag, 0};
    return std::ranges::any_of(tags, [&](int64_t tag) {
        copied.SetChild(IFormatCodec::TAG_CODEC_TAG, tag);
        return MuxerTakes(plan.muxer, copied);
    });
}

}  // namespace

bool MayBeCopied(const PresetStream& wanted) {
    if (wanted.isCopy || !wanted.isOpen) return wanted.isCopy;
    // These settings say which stream is meant; any other asks for something that only an encoder gives.
    for (const Property& child : wanted.settings) {
        if (child.Name() == IPreset::KEY_TYPE_ID) continue;
        if (child.Name() != wanted.kind->codecKey) return false;
        for (const Property& setting : child) {
            if (setting.Name() != IFormatCodec::TAG_CODEC_ID && setting.Name() != IFormatCodecVideo::TAG_COVER_FLAG) {
                return false;
            }
        }
    }
    return true;
}

std::string CopyObstacle(const CheckedPreset& preset, const PresetStream& wanted, const MediaStream& source,
                         const Plan& plan) {
    if (plan.sizeLimit && !WantsCover(wanted)) return "a copy cannot be held to a size";
    const Property node = CopiedNode(*wanted.kind, source, source.codec);
    if (!IsStored(plan, wanted, source, node[wanted.kind->codecKey])) {
        return "the container " + preset.container + " does not store " + source.codec + " as it is in the input";
    }
    if (source.rotation != 0 && !FFWrapper::MuxerRecord::Find(plan.muxer).hasRotation) {
        return "the container " + preset.container + " does not keep that the picture is to be turned";
    }
    if (wanted.isCopy) return {};
    // A disc's player wants more than its helper says: groups of pictures, a buffer.
    if (Conf::DiscRecord::Find(plan.FormatSettings()) != nullptr) return "discs are encoded for their players";
    StreamSettings settings(wanted, plan.FormatSettings());
    for (const Proc::FilterRecord& filter : Proc::FilterRecord::All()) {
        if (filter.type != wanted.kind->type) continue;
        const HelperPtr helper = FindHelper(kFilters, filter.classId);
        settings.AddFilter({filter.classId, helper, helper->GetDefaultSettings()});
    }
    settings.Take(node[wanted.kind->codecKey], Origin::Input);
    Requirements requirements;
    AddFormatRequirements(preset.container, *preset.format, requirements);
    const Property tree = settings.RuleTree();
    for (const Requirement& requirement : requirements) {
        if (requirement.Applies(tree) && !requirement.Accepts(tree.ChildByPath(requirement.path)))
            return requirement.InWords();
    }
    return {};
}

Property CopiedNode(const Conf::StreamRecord& kind, const MediaStream& source, const std::string& codecId) {
    Property node;
    node.SetChild(IPreset::KEY_TYPE_ID, kind.typeId);
    Property& codec = node.SetChild(kind.codecKey);
    codec.SetChild(IFormatCodec::TAG_CODEC_ID, codecId);
    if (kind.type == StreamType::Video) {
        codec.SetChild(IFormatCodecVideo::TAG_WIDTH, source.width);
        codec.SetChild(IFormatCodecVideo::TAG_HEIGHT, source.height);
        codec.SetChild(IFormatCodecVideo::TAG_ASPECTX, source.sampleAspectRatio.numerator());
        codec.SetChild(IFormatCodecVideo::TAG_ASPECTY, source.sampleAspectRatio.denominator());
        if (source.fps > Property::Ratio(0)) codec.SetChild(IFormatCodecVideo::TAG_FPS, source.fps);
        if (source.isCover) codec.SetChild(IFormatCodecVideo::TAG_COVER_FLAG, true);
    } else if (kind.type == StreamType::Audio) {
        codec.SetChild(IFormatCodecAudio::TAG_SAMPLE_RATE, source.sampleRate);
        codec.SetChild(IFormatCodecAudio::TAG_LAYOUT, source.layout);
    }
    return node;
}

}  // namespace Kestro::Planner
