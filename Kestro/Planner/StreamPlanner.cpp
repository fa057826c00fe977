#include "Kestro/Planner/StreamPlanner.h"

#include <algorithm>
#include <cstdlib>
#include <tuple>

#include "Kestro/Conf/DiscRecord.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/Exception.h"
#include "Kestro/FFWrapper/EncoderNameFromCodecId.h"
#include "Kestro/Planner/Automatic.h"
#include "Kestro/Planner/Domain.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/RuleTree.h"
#include "Kestro/Planner/Text.h"
#include "Kestro/Planner/Tree.h"
#include "Kestro/Proc/FilterRecord.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResample.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/Proc/IResample.h"
#include "Kestro/Proc/IResize.h"
#include "Kestro/Proc/KeepSource.h"

namespace Kestro::Planner {
namespace {

using Conf::FrameSize;
using Kestro::Conf::ConstraintMap;
using Kestro::Conf::FilterList;
using Kestro::Conf::IDataHelper;
using Kestro::Conf::IFormatCodec;
using Kestro::Conf::IFormatCodecAudio;
using Kestro::Conf::IFormatCodecVideo;
using Kestro::Conf::IPreset;
using Kestro::Conf::StreamType;
using Kestro::Core::Property;
using Kestro::Core::PropertyValueToString;
using Kestro::Proc::FilterRecord;
using Kestro::Proc::IFilterFrameRate;
using Kestro::Proc::IFilterResample;
using Kestro::Proc::IFilterResize;
using Kestro::Proc::IResample;
using Kestro::Proc::IResize;

// Two rules may push a value to and fro; then it is refused in the end.
constexpr int kMaxFits = 8;
// What a user is told to try where a quality is missing.
constexpr int kUsualQuality = 50;

}  // namespace

StreamPlanner::StreamPlanner(const CheckedPreset& preset, const PresetStream& stream, const MediaStream& source,
                             Plan& plan)
    : preset_(preset),
      stream_(stream),
      source_(source),
      plan_(plan),
      encoder_(FindHelper(CodecsOf(stream.kind->type), stream.codecId)),
      encoderName_(Kestro::FFWrapper::EncoderNameFromCodecId(stream.codecId)),
      codec_(stream.kind->codecKey) {}

Property StreamPlanner::Settle() {
    CheckCodec();
    StartFromSource();
    input_ = codec_;
    CollectFilters();
    CheckFilters();
    ApplyFilters();
    AddFormatRequirements(preset_.container, *preset_.format, requirements_);
    AddDiscRequirements(plan_.FormatSettings(), requirements_);
    AddEncoderRequirements(*stream_.kind, stream_.codecId, *encoder_, requirements_);
    AddInstalledEncoderRequirements(encoderName_, codec_, requirements_);
    FitUnasked(false);
    ApplyPreset();
    Correct(*preset_.format, "the container " + preset_.container, stream_.kind->formatCodecTag);
    Correct(*encoder_, "the encoder " + stream_.codecId, stream_.kind->codecKey);
    FitUnasked(true);
    CheckAll();
    SampleAspectRatioForTelevision();
    TellAutomatic();
    ReportWhatIsNotUsed(stream_.settings, StreamNode(), {});
    return StreamNode();
}

void StreamPlanner::CheckCodec() const {
    ConstraintMap constraints;
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
                         .wayOut = "take one of these, or another container"});
}

void StreamPlanner::StartFromSource() {
    if (!stream_.chosenBecause.empty()) {
        plan_.choices.push_back({UserPath(Below(stream_.kind->codecKey, IFormatCodec::TAG_CODEC_ID)), stream_.codecId,
                                 stream_.chosenBecause});
    }
    codec_.CopyDataFrom(encoder_->GetDefaultSettings());
    if (stream_.kind->type == StreamType::Audio) {
        codec_.SetChild(IFormatCodecAudio::TAG_SAMPLE_RATE, source_.sampleRate);
        codec_.SetChild(IFormatCodecAudio::TAG_LAYOUT, source_.layout);
        codec_.SetChild(IFormatCodecAudio::TAG_SAMPLE_FORMAT, source_.sampleFormat.empty()
                                                                  ? IFormatCodecAudio::TAG_SAMPLE_FORMAT_NONE
                                                                  : source_.sampleFormat);
        return;
    }
    codec_.SetChild(IFormatCodecVideo::TAG_WIDTH, source_.width);
    codec_.SetChild(IFormatCodecVideo::TAG_HEIGHT, source_.height);
    codec_.SetChild(IFormatCodecVideo::TAG_ASPECTX, source_.sampleAspectRatio.numerator());
    codec_.SetChild(IFormatCodecVideo::TAG_ASPECTY, source_.sampleAspectRatio.denominator());
    codec_.SetChild(IFormatCodecVideo::TAG_FPS, source_.fps);
}

void StreamPlanner::CollectFilters() {
    FilterList required;
    encoder_->GetRequiredFilters(required);
    for (const auto& [classId, implementation] : required) AddFilter(classId);
    for (const FilterRecord& kind : FilterRecord::All()) {
        if (stream_.settings.ChildExists(kind.classId)) AddFilter(kind.classId);
    }
}

void StreamPlanner::AddFilter(const std::string& classId) {
    if (std::ranges::any_of(filters_, [&](const Filter& filter) { return filter.classId == classId; })) return;
    Filter filter{.classId = classId, .helper = FindHelper(kFilters, classId), .settings = {}};
    filter.settings = filter.helper->GetDefaultSettings();
    // What is not asked for stays as it is in the source.
    Proc::KeepSource(filter.settings);
    if (stream_.settings.ChildExists(classId)) CompleteFilter(filter, stream_.settings[classId]);
    AddFilterRequirements(classId, *filter.helper, filterRequirements_);
    filters_.push_back(std::move(filter));
}

void StreamPlanner::CompleteFilter(Filter& filter, const Property& asked) {
    Override(filter.settings, asked);
    if (filter.classId != IFilterResize::CLASS_ID) return;
    const std::string mode = Below(IResize::CLASS_ID, IResize::FRAME_SIZE_MODE);
    const bool sized = asked.FindByPath(Below(IResize::CLASS_ID, IFormatCodecVideo::TAG_WIDTH)) != nullptr ||
                       asked.FindByPath(Below(IResize::CLASS_ID, IFormatCodecVideo::TAG_HEIGHT)) != nullptr;
    if (!sized || asked.FindByPath(mode) != nullptr) return;
    filter.settings.ChildByPath(mode) = IResize::FRAME_SIZE_CUSTOM;
    plan_.choices.push_back(
        {UserPath(Below(filter.classId, mode)), IResize::FRAME_SIZE_CUSTOM, "a width or height is given"});
}

void StreamPlanner::CheckFilters() const {
    // The filters' rules are kept by the filters themselves: sizes, for one, are made even.
    const Property tree = AskedFilters();
    for (const Requirement& requirement : filterRequirements_) {
        if (requirement.rule || !requirement.Applies(tree)) continue;
        const Property& value = tree.ChildByPath(requirement.path);
        if (!requirement.Accepts(value)) Refuse(requirement, value, {});
    }
    for (const Filter& filter : filters_) CheckImplementation(filter);
}

void StreamPlanner::CheckImplementation(const Filter& filter) const {
    ForEachValue(filter.helper->GetDefaultSettings(), {}, [&](const std::string& path, const Property& only) {
        if (LastSegment(path) != IPreset::KEY_TYPE_ID || filter.settings.ChildByPath(path) == only) return;
        const std::string userPath = UserPath(Below(filter.classId, path));
        const std::string known = PropertyValueToString(only);
        throw NotAcceptable({.code = ProblemCode::ValueNotAccepted,
                             .message = userPath + " names no known implementation.",
                             .path = userPath,
                             .value = PropertyValueToString(filter.settings.ChildByPath(path)),
                             .allowed = {known},
                             .changes = {{userPath, known}}});
    });
}

void StreamPlanner::ApplyFilters() {
    const Property before = codec_;
    const std::string& sampleFormat = IFormatCodecAudio::TAG_SAMPLE_FORMAT;
    try {
        for (const Filter& filter : filters_) {
            const Property* wanted = filter.settings.FindByPath(Below(IResample::CLASS_ID, sampleFormat));
            if (wanted != nullptr && !Proc::IsSourceValue(sampleFormat, *wanted))
                codec_.SetChild(sampleFormat, *wanted);
            filter.helper->ApplyPresetSettings(filter.settings, codec_);
        }
    } catch (const Kestro::Exception& exception) {
        throw NotAcceptable({.code = ProblemCode::ValueNotAccepted, .message = exception.what(), .path = stream_.path});
    }
    const std::string mode = Below(Below(IFilterResize::CLASS_ID, IResize::CLASS_ID), IResize::FRAME_SIZE_MODE);
    const bool isCustom = TextAt(AskedFilters(), mode) == IResize::FRAME_SIZE_CUSTOM;
    for (const auto& [tag, other] : {std::tie(IFormatCodecVideo::TAG_WIDTH, IFormatCodecVideo::TAG_HEIGHT),
                                     std::tie(IFormatCodecVideo::TAG_HEIGHT, IFormatCodecVideo::TAG_WIDTH)}) {
        if (!codec_.ChildExists(tag) || codec_[tag] == before[tag]) continue;
        const std::string place = Place(tag);
        if (!place.starts_with(IFilterResize::CLASS_ID) || IsAsked(place)) continue;
        if (isCustom && IsAsked(Place(other))) {
            plan_.choices.push_back({UserPath(place), PropertyValueToString(codec_[tag]), "keeps the picture's shape"});
        } else if (!IsAsked(mode)) {
            // Without a size of its own the stream has the source's, made even.
            AddCorrection(place, &before[tag], &codec_[tag], "The sides of a frame must be even.");
        }
    }
    if (codec_.ChildExists(IFormatCodecVideo::TAG_FPS) &&
        codec_[IFormatCodecVideo::TAG_FPS].GetRatio() == Property::Ratio(0)) {
        const Property usual =
            FindHelper(kFilters, IFilterFrameRate::CLASS_ID)->GetDefaultSettings()[IFormatCodecVideo::TAG_FPS];
        codec_[IFormatCodecVideo::TAG_FPS].CopyDataFrom(usual);
        plan_.choices.push_back({UserPath(Place(IFormatCodecVideo::TAG_FPS)), PropertyValueToString(usual),
                                 "the input does not tell its frame rate"});
    }
}

void StreamPlanner::ApplyPreset() {
    Property preset = stream_.settings[stream_.kind->codecKey];
    const Property defaults = encoder_->GetDefaultSettings();
    const std::string& mode = IFormatCodec::TAG_BITRATE_MODE;
    const std::string& bitrate = IFormatCodec::TAG_BITRATE;
    if (preset[IFormatCodec::TAG_CODEC_ID].GetString() == stream_.codecId) {
        const auto complete = [&](const std::string& tag) {
            if (preset.ChildExists(tag) || !defaults.ChildExists(tag)) return;
            preset.SetChild(tag, defaults[tag]);
            if (!preset_.isFromText) return;  // Defaults are what was asked for.
            plan_.choices.push_back({UserPath(Below(stream_.kind->codecKey, tag)), PropertyValueToString(defaults[tag]),
                                     "the default of " + stream_.codecId});
        };
        const bool isOpen = !preset.ChildExists(mode) || !preset_.isFromText;
        complete(mode);
        const std::string chosen = TextAt(preset, mode);
        if (chosen == IFormatCodec::TAG_BITRATE_MODE_CBR) complete(bitrate);
        if (chosen == IFormatCodec::TAG_BITRATE_MODE_VBR && isOpen) complete(IFormatCodec::TAG_QUALITY);
    }

    const Property before = codec_;
    try {
        encoder_->ApplyPresetSettings(preset, codec_);
    } catch (const Kestro::Exception& exception) {
        ExplainApplyFailure(exception.what());
    }
    for (const std::string* tag : {&mode, &bitrate}) {
        const Property* was = preset.ChildExists(*tag) ? &preset[*tag] : before.FindByPath(*tag);
        if (was == nullptr || !codec_.ChildExists(*tag)) continue;
        const bool isSame = *was == codec_[*tag];
        if (isSame && (tag == &mode || TextAt(preset, mode) != IFormatCodec::TAG_BITRATE_MODE_CBR_AUTO)) continue;
        std::string reason = "constant, and the bitrate is left to the program";
        if (isSame) {
            reason = "the default of " + stream_.codecId;
        } else if (tag == &bitrate) {
            reason = "the usual one";
            if (stream_.kind->type == StreamType::Video) {
                reason += " for " + std::to_string(codec_[IFormatCodecVideo::TAG_WIDTH].GetInt64()) + " x " +
                          std::to_string(codec_[IFormatCodecVideo::TAG_HEIGHT].GetInt64()) + " at " +
                          PropertyValueToString(codec_[IFormatCodecVideo::TAG_FPS]) + " frames/s";
            }
            if (codec_[mode].GetString() == IFormatCodec::TAG_BITRATE_MODE_VBR) {
                reason += ", quality " + PropertyValueToString(codec_[IFormatCodec::TAG_QUALITY]);
            }
        }
        plan_.choices.push_back(
            {UserPath(Below(stream_.kind->codecKey, *tag)), PropertyValueToString(codec_[*tag]), reason});
    }
}

void StreamPlanner::Correct(const IDataHelper& helper, const std::string& who, const std::string& nodeName) {
    const Property tree = RuleTree();
    Property node(nodeName);
    node.CopyDataFrom(codec_);
    try {
        helper.CorrectFormatCodec(node);
    } catch (const Kestro::Exception& exception) {
        const std::string message = exception.what();
        const Requirement* cause = nullptr;
        for (const Requirement& requirement : requirements_) {
            if (!requirement.Applies(tree) || requirement.Accepts(tree.ChildByPath(requirement.path))) continue;
            const bool named = message.find("[" + LastSegment(requirement.path) + "]") != std::string::npos;
            if (cause == nullptr || named) cause = &requirement;
            if (named) break;
        }
        if (cause != nullptr) Refuse(*cause, tree.ChildByPath(cause->path), message);
        throw NotAcceptable({.code = ProblemCode::ValueNotAccepted, .message = message, .path = stream_.path});
    }
    // The container's lists name the input's own rate by its mark, and may correct to it.
    const std::string& fps = IFormatCodecVideo::TAG_FPS;
    if (node.ChildExists(fps) && Proc::IsSourceValue(fps, node[fps])) {
        const bool isKnown = source_.fps > Property::Ratio(0);
        node[fps].CopyDataFrom(isKnown ? Property({}, source_.fps) : codec_[fps]);
    }
    ForEachValue(codec_, {}, [&](const std::string& path, const Property& before) {
        const Property* after = node.FindByPath(path);
        if (after != nullptr && *after == before) return;
        AddCorrection(Place(path), &before, after, Reason(tree, Place(path), before, who));
    });
    ForEachValue(node, {}, [&](const std::string& path, const Property& after) {
        if (codec_.FindByPath(path) != nullptr) return;
        const bool isDefault = helper.GetDefaultSettings().FindByPath(path) != nullptr;
        plan_.choices.push_back(
            {UserPath(Place(path)), PropertyValueToString(after),
             isDefault ? "the default of " + who : "what " + who + " comes to by the other settings"});
    });
    codec_.CopyDataFrom(node);
}

bool StreamPlanner::IsMet(const Requirement& requirement, const Property& tree) const {
    const std::vector<FrameSize> sizes = requirement.FrameSizes();
    if (!sizes.empty()) {
        const FrameSize size{codec_[IFormatCodecVideo::TAG_WIDTH].GetInt64(),
                             codec_[IFormatCodecVideo::TAG_HEIGHT].GetInt64()};
        return std::ranges::find(sizes, size) != sizes.end();
    }
    if (requirement.Accepts(tree.ChildByPath(requirement.path))) return true;
    const Property asked = AskedFilters();
    const Property* kept = asked.FindByPath(requirement.path);
    return kept != nullptr && Proc::IsSourceValue(LastSegment(requirement.path), *kept) && requirement.Accepts(*kept);
}

void StreamPlanner::FitFrameSize(const Requirement& requirement) {
    const std::string& widthTag = IFormatCodecVideo::TAG_WIDTH;
    const std::string& heightTag = IFormatCodecVideo::TAG_HEIGHT;
    if (IsAsked(requirement.path) || IsAsked(Place(widthTag)) || IsAsked(Place(heightTag))) return;
    const Property before = codec_;
    const auto distance = [&](const FrameSize& size) {
        return std::abs(size.width - before[widthTag].GetInt64()) +
               std::abs(size.height - before[heightTag].GetInt64());
    };
    // First those at which the frame rate may stay, then the nearest.
    const auto changesRate = [&](const FrameSize& size) {
        codec_.SetChild(widthTag, size.width);
        codec_.SetChild(heightTag, size.height);
        const Property tree = RuleTree();
        codec_ = before;
        return std::ranges::any_of(requirements_, [&](const Requirement& other) {
            return LastSegment(other.path) == IFormatCodecVideo::TAG_FPS && other.Applies(tree) && !IsMet(other, tree);
        });
    };
    const std::vector<FrameSize> sizes = requirement.FrameSizes();
    const auto order = [&](const FrameSize& size) { return std::pair(changesRate(size), distance(size)); };
    const FrameSize nearest = *std::ranges::min_element(sizes, {}, order);
    for (Filter& filter : filters_) {
        if (filter.classId != IFilterResize::CLASS_ID) continue;
        Property& resizer = filter.settings[IResize::CLASS_ID];
        resizer.SetChild(IResize::FRAME_SIZE_MODE, IResize::FRAME_SIZE_CUSTOM);
        resizer.SetChild(widthTag, nearest.width);
        resizer.SetChild(heightTag, nearest.height);
        filter.helper->ApplyPresetSettings(filter.settings, codec_);
    }
    for (const std::string* tag : {&widthTag, &heightTag}) {
        if (codec_[*tag] == before[*tag]) continue;
        AddCorrection(Place(*tag), &before[*tag], &codec_[*tag], requirement.InWords());
    }
}

void StreamPlanner::SampleAspectRatioForTelevision() {
    const Conf::DiscRecord* disc = Conf::DiscRecord::Find(plan_.FormatSettings());
    const bool isDv = stream_.codecId == IFormatCodecVideo::CODEC_ID_DVVIDEO;
    if (stream_.kind->type != StreamType::Video || (disc == nullptr && !isDv)) return;
    const double shape = static_cast<double>(source_.width) * boost::rational_cast<double>(source_.sampleAspectRatio) /
                         static_cast<double>(source_.height);
    const FrameSize frame{codec_[IFormatCodecVideo::TAG_WIDTH].GetInt64(),
                          codec_[IFormatCodecVideo::TAG_HEIGHT].GetInt64()};
    const auto pixels = Conf::TelevisionSampleAspectRatio(frame, shape, isDv || disc->isWide);
    codec_.SetChild(IFormatCodecVideo::TAG_ASPECTX, pixels.numerator());
    codec_.SetChild(IFormatCodecVideo::TAG_ASPECTY, pixels.denominator());
}

void StreamPlanner::FitUnasked(bool codecSettingsToo) {
    for (const Requirement& requirement : requirements_) {
        const Property tree = RuleTree();
        if (requirement.Applies(tree) && !requirement.FrameSizes().empty() && !IsMet(requirement, tree))
            FitFrameSize(requirement);
    }
    const std::string& sampleFormat = IFormatCodecAudio::TAG_SAMPLE_FORMAT;
    for (int round = 0; round < kMaxFits; ++round) {
        const Property tree = RuleTree();
        const Requirement* broken = nullptr;
        for (const Requirement& requirement : requirements_) {
            if (!requirement.Applies(tree) || IsAsked(requirement.path) || InCodec(requirement.path).empty()) continue;
            if (!codecSettingsToo && requirement.path.starts_with(stream_.kind->codecKey)) continue;
            const Property& value = tree.ChildByPath(requirement.path);
            if (IsMet(requirement, tree) || requirement.Corrected(value) == value) continue;
            broken = &requirement;
            break;
        }
        if (broken == nullptr) return;
        const Property& before = tree.ChildByPath(broken->path);
        const Property after = broken->Corrected(before);
        codec_.ChildByPath(InCodec(broken->path)).CopyDataFrom(after);
        if (LastSegment(broken->path) == sampleFormat) {
            plan_.choices.push_back(
                {UserPath(broken->path), PropertyValueToString(after), "the samples that " + broken->who + " takes"});
            for (const Filter& filter : filters_) {
                // It brings the size of a sample in line.
                if (filter.classId == IFilterResample::CLASS_ID)
                    filter.helper->ApplyPresetSettings(Aligned(filter), codec_);
            }
        } else {
            const bool isInput = !broken->path.starts_with(stream_.kind->codecKey);
            AddCorrection(broken->path, &before, &after,
                          (isInput ? "The input has " : "The default is ") + PropertyValueToString(before) + ". " +
                              broken->InWords());
        }
    }
}

void StreamPlanner::CheckAll() const {
    const Property tree = RuleTree();
    for (const Requirement& requirement : requirements_) {
        if (requirement.Applies(tree) && !IsMet(requirement, tree))
            Refuse(requirement, tree.ChildByPath(requirement.path), {});
    }
    for (const Requirement& requirement : filterRequirements_) {
        if (!requirement.rule || !requirement.Applies(tree)) continue;
        if (!IsMet(requirement, tree)) Refuse(requirement, tree.ChildByPath(requirement.path), {});
    }
}

void StreamPlanner::TellAutomatic() {
    const Property settled = StreamNode();
    const auto tell = [&](const std::string& path, const std::string& reason) {
        const std::string userPath = UserPath(path);
        const Choice choice{userPath, PropertyValueToString(settled.ChildByPath(path)), reason};
        const auto earlier = std::ranges::find(plan_.choices, userPath, &Choice::path);
        if (earlier == plan_.choices.end()) {
            plan_.choices.push_back(choice);
        } else {
            *earlier = choice;
        }
        // What was left open was not wrong.
        std::erase_if(plan_.corrections, [&](const Correction& correction) { return correction.path == userPath; });
    };
    for (const AutomaticSetting& setting : AutomaticSettings()) {
        const Property* asked = stream_.settings.FindByPath(setting.path);
        if (asked == nullptr || !(*asked == setting.value) || settled.FindByPath(setting.path) == nullptr) continue;
        tell(setting.path, "auto: " + AutomaticReason(setting.path, settled.ChildByPath(setting.path)));
        if (LastSegment(setting.path) != IFormatCodec::TAG_BITRATE_MODE) continue;
        const std::string bitrate = Below(stream_.kind->codecKey, IFormatCodec::TAG_BITRATE);
        const auto moved = std::ranges::find(plan_.corrections, UserPath(bitrate), &Correction::path);
        if (moved != plan_.corrections.end() && moved->after) tell(bitrate, std::string(moved->reason));
    }
}

std::string StreamPlanner::AutomaticReason(const std::string& path, const Property& value) const {
    const std::string userPath = UserPath(path);
    const bool isMode = LastSegment(path) == IFormatCodec::TAG_BITRATE_MODE;
    const Property* before = isMode ? nullptr : input_.FindByPath(LastSegment(path));
    if (before != nullptr && *before == value) return "the input has " + PropertyValueToString(value);

    const auto choice = std::ranges::find(plan_.choices, userPath, &Choice::path);
    const auto correction = std::ranges::find(plan_.corrections, userPath, &Correction::path);
    if (isMode && correction != plan_.corrections.end()) return correction->reason;
    if (choice != plan_.choices.end()) return choice->reason;

    std::vector<std::string> takers;
    const Property tree = RuleTree();
    for (const Requirement& requirement : requirements_) {
        if (before == nullptr || requirement.path != path || !requirement.Applies(tree) || requirement.Accepts(*before))
            continue;
        // The installed encoder mostly repeats what is known of the codec.
        if (requirement.isInstalled && !takers.empty()) continue;
        if (std::ranges::find(takers, requirement.who) == takers.end()) takers.push_back(requirement.who);
    }
    if (takers.empty()) return "what the stream's other settings ask for";
    return "nearest to the input's " + PropertyValueToString(*before) + " that " + Join(takers, " and ") +
           (takers.size() == 1 ? " takes" : " take");
}

void StreamPlanner::ReportWhatIsNotUsed(const Property& asked, const Property& used, const std::string& below) {
    ForEachValue(asked, below, [&](const std::string& path, const Property& value) {
        const Property* final = used.FindByPath(path);
        if ((final != nullptr && *final == value) || Proc::IsSourceValue(LastSegment(path), value)) return;
        const std::string userPath = UserPath(path);
        const auto told = [&userPath](const auto& entry) { return entry.path == userPath; };
        if (std::ranges::any_of(plan_.choices, told) || std::ranges::any_of(plan_.corrections, told)) return;
        if (final == nullptr || path.starts_with(stream_.kind->codecKey)) {
            plan_.notes.push_back(userPath + " = " + PropertyValueToString(value) + " has no effect here" +
                                  (final == nullptr ? "." : ": it stays " + PropertyValueToString(*final) + "."));
            return;
        }
        const Requirement* cause = nullptr;
        const Property tree = AskedFilters();
        for (const Requirement& requirement : filterRequirements_) {
            if (requirement.path == path && requirement.Applies(tree) && !requirement.Accepts(value))
                cause = &requirement;
        }
        if (cause != nullptr) {
            AddCorrection(path, &value, final, cause->InWords());
        } else {
            plan_.choices.push_back({userPath, PropertyValueToString(*final),
                                     "the preset's " + PropertyValueToString(value) + " comes to that"});
        }
    });
}

Property StreamPlanner::AskedFilters() const {
    Property tree;
    for (const Filter& filter : filters_) tree.SetChild(filter.classId, filter.settings);
    return tree;
}

Property StreamPlanner::Aligned(const Filter& filter) const {
    Property aligned = filter.settings;
    ForEachValue(filter.settings, {}, [&](const std::string& path, const Property&) {
        const std::string tag = LastSegment(path);
        if (codec_.ChildExists(tag)) aligned.ChildByPath(path).CopyDataFrom(codec_[tag]);
    });
    // A size in percent has become one in pixels; each side was scaled as it was asked for.
    const std::string mode = Below(IResize::CLASS_ID, IResize::FRAME_SIZE_MODE);
    const Property* found = aligned.FindByPath(mode);
    if (found != nullptr && *found == Property({}, IResize::FRAME_SIZE_CUSTOM_SCALE)) {
        aligned.ChildByPath(mode) = IResize::FRAME_SIZE_CUSTOM;
        aligned[IResize::CLASS_ID].SetChild(IResize::MODE, IResize::MODE_STRETCH);
    }
    return aligned;
}

Property StreamPlanner::StreamNode() const {
    Property node;
    node.SetChild(IPreset::KEY_TYPE_ID, stream_.kind->typeId);
    node.SetChild(stream_.kind->codecKey, codec_);
    for (const Filter& filter : filters_) node.SetChild(filter.classId, Aligned(filter));
    return node;
}

Property StreamPlanner::RuleTree() const { return Planner::RuleTree(plan_.FormatSettings(), StreamNode()); }

bool StreamPlanner::IsAsked(const std::string& path) const {
    const Property* value = stream_.settings.FindByPath(path);
    if (value != nullptr && !Proc::IsSourceValue(LastSegment(path), *value)) return true;
    // A frame rate may also stand in the codec node.
    const std::string codecPath = Below(stream_.kind->codecKey, LastSegment(path));
    const Property* inCodec =
        path.starts_with(stream_.kind->codecKey) ? nullptr : stream_.settings.FindByPath(codecPath);
    return inCodec != nullptr && !Proc::IsSourceValue(LastSegment(path), *inCodec);
}

std::string StreamPlanner::InCodec(const std::string& path) const {
    const std::string own = stream_.kind->codecKey + Property::SEPARATOR;
    if (path.starts_with(own)) return path.substr(own.size());
    const bool ofFilter = std::ranges::any_of(
        filters_, [&path](const Filter& filter) { return path.starts_with(filter.classId + Property::SEPARATOR); });
    return ofFilter && codec_.ChildExists(LastSegment(path)) ? LastSegment(path) : std::string();
}

std::string StreamPlanner::Place(const std::string& inCodec) const {
    for (const Filter& filter : filters_) {
        std::string place;
        ForEachValue(filter.settings, filter.classId, [&](const std::string& path, const Property&) {
            if (LastSegment(path) == inCodec) place = path;
        });
        if (!place.empty()) return place;
    }
    return Below(stream_.kind->codecKey, inCodec);
}

std::string StreamPlanner::UserPath(const std::string& path) const {
    const bool fromRoot = path.starts_with(IPreset::KEY_FORMAT + Property::SEPARATOR) ||
                          path.starts_with(IPreset::KEY_STREAMS + Property::SEPARATOR);
    return fromRoot ? path : Below(stream_.path, path);
}

void StreamPlanner::AddCorrection(const std::string& path, const Property* before, const Property* after,
                                  const std::string& reason) {
    const std::string userPath = UserPath(path);
    const auto copy = [](const Property* value) { return value != nullptr ? std::optional(*value) : std::nullopt; };
    const auto same = [&userPath](const Correction& correction) { return correction.path == userPath; };
    const auto earlier = std::ranges::find_if(plan_.corrections, same);
    if (earlier == plan_.corrections.end()) {
        plan_.corrections.push_back({userPath, copy(before), copy(after), reason});
    } else {
        // Moved twice: the user sees where it came from and where it went.
        earlier->after = copy(after);
        earlier->reason += " " + reason;
    }
}

std::string StreamPlanner::Reason(const Property& tree, const std::string& place, const Property& before,
                                  const std::string& who) const {
    const std::string own = Below(stream_.kind->codecKey, LastSegment(place));
    for (const Requirement& requirement : requirements_) {
        if ((requirement.path == place || requirement.path == own) && requirement.Applies(tree) &&
            !requirement.Accepts(before)) {
            return requirement.InWords();
        }
    }
    // Some encoders correct what no constraint tells, such as a bitrate by the sample rate.
    return "Held by " + who + " to what it can do with the other settings.";
}

void StreamPlanner::Refuse(const Requirement& requirement, const Property& value, const std::string& message) const {
    RefuseValue(requirement, value, UserPath(requirement.path), message);
}

void StreamPlanner::ExplainApplyFailure(const std::string& message) const {
    const Property& preset = stream_.settings[stream_.kind->codecKey];
    const std::string& codecId = preset[IFormatCodec::TAG_CODEC_ID].GetString();
    if (codecId != stream_.codecId) {
        throw NotAcceptable(
            {.code = ProblemCode::ValueNotAccepted,
             .message = message,
             .path = UserPath(Below(stream_.kind->codecKey, IFormatCodec::TAG_CODEC_ID)),
             .value = codecId,
             .allowed = {stream_.codecId},
             .wayOut = "take a preset for " + stream_.codecId + ", or leave out " + stream_.chosen->by});
    }
    Property tree;
    tree.SetChild(stream_.kind->codecKey, preset);
    const auto demandOn = [&](const std::string& tag) {
        const std::string path = Below(stream_.kind->codecKey, tag);
        return std::ranges::find_if(requirements_, [&](const Requirement& requirement) {
            return requirement.path == path && !requirement.rule;
        });
    };
    const auto mode = demandOn(IFormatCodec::TAG_BITRATE_MODE);
    if (mode != requirements_.end() && mode->Applies(tree) && !mode->Accepts(tree.ChildByPath(mode->path))) {
        Refuse(*mode, tree.ChildByPath(mode->path), message);
    }
    const auto quality = demandOn(IFormatCodec::TAG_QUALITY);
    if (quality != requirements_.end() && !preset.ChildExists(IFormatCodec::TAG_QUALITY)) {
        const std::string path = UserPath(quality->path);
        const Property usual = quality->Corrected(Property({}, kUsualQuality));
        throw NotAcceptable({.code = ProblemCode::MissingSetting,
                             .message = message,
                             .path = path,
                             .allowed = AllowedValues(DescribeDomain(*quality->constraint)),
                             .changes = {{path, PropertyValueToString(usual)}}});
    }
    throw NotAcceptable(
        {.code = ProblemCode::ValueNotAccepted, .message = message, .path = UserPath(stream_.kind->codecKey)});
}

}  // namespace Kestro::Planner
