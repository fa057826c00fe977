#include "Kestro/Planner/StreamPlanner.h"

#include <algorithm>

#include "Kestro/Conf/DiscRecord.h"
#include "Kestro/Conf/HelperException.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/FFWrapper/EncoderNameFromCodecId.h"
#include "Kestro/Planner/Domain.h"
#include "Kestro/Planner/EncoderPreset.h"
#include "Kestro/Planner/FitUnasked.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/StreamFilters.h"
#include "Kestro/Planner/Text.h"
#include "Kestro/Planner/Tree.h"
#include "Kestro/Proc/KeepSource.h"

namespace Kestro::Planner {
namespace {

using Conf::IFormatCodec;
using Conf::IFormatCodecAudio;
using Conf::IFormatCodecVideo;
using Conf::StreamType;
using Core::Property;

}  // namespace

StreamPlanner::StreamPlanner(const CheckedPreset& preset, const PresetStream& stream, const MediaStream& source,
                             Plan& plan)
    : preset_(preset),
      stream_(stream),
      source_(source),
      plan_(plan),
      encoder_(FindHelper(CodecsOf(stream.kind->type), stream.codecId)),
      settings_(stream, plan.FormatSettings()) {}

Property StreamPlanner::Settle() {
    const std::string& node = stream_.kind->codecKey;
    CheckCodec();
    StartFromSource();
    CollectFilters(stream_, *encoder_, settings_, filterRequirements_);
    CheckFilters(filterRequirements_, settings_);
    ApplyFilters(stream_, filterRequirements_, settings_);
    AddRequirements();
    FitUnasked(settings_, requirements_, node, false);
    ApplyEncoderPreset(stream_, preset_.isFromText, *encoder_, requirements_, settings_);
    Correct(*preset_.format, Origin::Container, "the container " + preset_.container, stream_.kind->formatCodecTag);
    Correct(*encoder_, Origin::Encoder, "the encoder " + stream_.codecId, node);
    FitUnasked(settings_, requirements_, node, true);
    CheckAll();
    SetSampleAspectRatioForTelevision();
    plan_.Add(settings_.Tell());
    return settings_.Node();
}

void StreamPlanner::CheckCodec() const {
    Conf::ConstraintMap constraints;
    preset_.format->FillConstraints(constraints);
    const std::string path = stream_.kind->CodecIdPath();
    const auto found = constraints.find(path);
    if (found == constraints.end()) {
        throw NotAcceptable(
            {.code = ProblemCode::NoSuchStream,
             .message = "The container " + preset_.container + " takes no " + stream_.kind->typeId + " stream.",
             .path = stream_.path});
    }
    if (found->second->IsValid(Property({}, stream_.codecId))) return;
    const std::vector<std::string> allowed = AllowedValues(DescribeDomain(*found->second));
    throw NotAcceptable({.code = ProblemCode::CodecNotTaken,
                         .message = "The container " + preset_.container + " does not take " + stream_.codecId + " " +
                                    stream_.kind->typeId + "." + DidYouMean(stream_.codecId, allowed),
                         .path = path,
                         .value = stream_.codecId,
                         .allowed = allowed,
                         .cause = "the container " + preset_.container + " stores these codecs alone",
                         .wayOut = "take one of these, or another container"});
}

void StreamPlanner::StartFromSource() {
    Property codec(stream_.kind->codecKey);
    codec.CopyDataFrom(encoder_->GetDefaultSettings());
    settings_.Take(codec, Origin::Default);
    if (!stream_.chosenBecause.empty()) {
        settings_.Set(IFormatCodec::TAG_CODEC_ID, Property({}, stream_.codecId), Origin::Default,
                      stream_.chosenBecause);
    }
    const auto set = [this](const std::string& tag, const Property& value) {
        settings_.Set(tag, value, Origin::Input);
    };
    if (stream_.kind->type == StreamType::Audio) {
        const bool isKnown = !source_.sampleFormat.empty();
        set(IFormatCodecAudio::TAG_SAMPLE_RATE, {{}, source_.sampleRate});
        set(IFormatCodecAudio::TAG_LAYOUT, {{}, source_.layout});
        set(IFormatCodecAudio::TAG_SAMPLE_FORMAT,
            {{}, isKnown ? source_.sampleFormat : IFormatCodecAudio::TAG_SAMPLE_FORMAT_NONE});
        return;
    }
    set(IFormatCodecVideo::TAG_WIDTH, {{}, source_.width});
    set(IFormatCodecVideo::TAG_HEIGHT, {{}, source_.height});
    set(IFormatCodecVideo::TAG_ASPECTX, {{}, source_.sampleAspectRatio.numerator()});
    set(IFormatCodecVideo::TAG_ASPECTY, {{}, source_.sampleAspectRatio.denominator()});
    set(IFormatCodecVideo::TAG_FPS, {{}, source_.fps});
}

void StreamPlanner::AddRequirements() {
    AddFormatRequirements(preset_.container, *preset_.format, requirements_);
    AddDiscRequirements(plan_.FormatSettings(), requirements_);
    AddEncoderRequirements(*stream_.kind, stream_.codecId, *encoder_, requirements_);
    AddInstalledEncoderRequirements(FFWrapper::EncoderNameFromCodecId(stream_.codecId), settings_.Codec(),
                                    requirements_);
}

void StreamPlanner::Correct(const Conf::IDataHelper& helper, Origin origin, const std::string& who,
                            const std::string& nodeName) {
    const Property tree = settings_.RuleTree();
    Property node(nodeName);
    node.CopyDataFrom(settings_.Codec());
    try {
        helper.CorrectFormatCodec(node);
    } catch (const Exception& exception) {
        RefuseUncorrectable(exception, tree);
    }
    // A container's list of rates may have "as the source" as an entry, and correct to that.
    const std::string& fps = IFormatCodecVideo::TAG_FPS;
    if (node.ChildExists(fps) && Proc::IsSourceValue(fps, node[fps])) {
        const bool isKnown = source_.fps > Property::Ratio(0);
        node[fps].CopyDataFrom(isKnown ? Property({}, source_.fps) : settings_.Codec()[fps]);
    }
    const auto why = [&](const std::string& path, const Property* before) {
        const std::string own = Below(stream_.kind->codecKey, LastSegment(path));
        for (const Requirement& requirement : requirements_) {
            const bool isOnIt = requirement.path == path || requirement.path == own;
            if (!isOnIt || !requirement.Applies(tree) || requirement.Accepts(*before)) continue;
            return WhyMoved(requirement, requirements_, settings_, tree);
        }
        // Some encoders correct what no constraint tells, such as a bitrate by the sample rate.
        return "Held by " + who + " to what it can do with the other settings.";
    };
    const auto whyNew = [&](const std::string& path, const Property*) {
        const bool isDefault = helper.GetDefaultSettings().FindByPath(settings_.InCodec(path)) != nullptr;
        return isDefault ? "the default of " + who : "what " + who + " comes to by the other settings";
    };
    settings_.Take(node, origin, why, whyNew);
}

void StreamPlanner::RefuseUncorrectable(const Exception& exception, const Property& tree) const {
    const std::string* tag = boost::get_error_info<Conf::HelperException::TagSetting>(exception);
    const Requirement* cause = nullptr;
    for (const Requirement& requirement : requirements_) {
        if (!requirement.Applies(tree) || requirement.Accepts(tree.ChildByPath(requirement.path))) continue;
        const bool isNamed = tag != nullptr && LastSegment(requirement.path) == *tag;
        if (cause == nullptr || isNamed) cause = &requirement;
        if (isNamed) break;
    }
    if (cause != nullptr) {
        RefuseValue(*cause, tree.ChildByPath(cause->path), settings_.UserPath(cause->path), exception.what());
    }
    throw NotAcceptable({.code = ProblemCode::ValueNotAccepted, .message = exception.what(), .path = stream_.path});
}

void StreamPlanner::CheckAll() const {
    const Property tree = settings_.RuleTree();
    for (const Requirements* all : {&requirements_, &filterRequirements_}) {
        for (const Requirement& requirement : *all) {
            if (all == &filterRequirements_ && !requirement.rule) continue;
            if (requirement.Applies(tree) && !IsMet(requirement, settings_, tree)) Refuse(requirement, tree);
        }
    }
}

void StreamPlanner::SetSampleAspectRatioForTelevision() {
    const Conf::DiscRecord* disc = Conf::DiscRecord::Find(plan_.FormatSettings());
    const bool isDv = stream_.codecId == IFormatCodecVideo::CODEC_ID_DVVIDEO;
    if (stream_.kind->type != StreamType::Video || (disc == nullptr && !isDv)) return;
    const Property& codec = settings_.Codec();
    const double shape = static_cast<double>(source_.width) * boost::rational_cast<double>(source_.sampleAspectRatio) /
                         static_cast<double>(source_.height);
    const Conf::FrameSize frame{codec[IFormatCodecVideo::TAG_WIDTH].GetInt64(),
                                codec[IFormatCodecVideo::TAG_HEIGHT].GetInt64()};
    const auto ratio = Conf::TelevisionSampleAspectRatio(frame, shape, isDv || disc->isWide);
    settings_.Set(IFormatCodecVideo::TAG_ASPECTX, {{}, ratio.numerator()}, Origin::Container);
    settings_.Set(IFormatCodecVideo::TAG_ASPECTY, {{}, ratio.denominator()}, Origin::Container);
}

void StreamPlanner::Refuse(const Requirement& requirement, const Property& tree) const {
    RefuseValue(requirement, tree.ChildByPath(requirement.path), settings_.UserPath(requirement.path), {});
}

}  // namespace Kestro::Planner
