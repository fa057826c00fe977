#include "Kestro/Planner/Requirement.h"

#include <algorithm>
#include <utility>

#include "Kestro/Conf/ConstraintIsNotApplicableForTypeException.h"
#include "Kestro/Conf/DataHelpers/ConstraintRange.h"
#include "Kestro/Conf/DataHelpers/ConstraintSet.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Conf/LayoutRecord.h"
#include "Kestro/Conf/SampleFmtRecord.h"
#include "Kestro/Core/PropertyException.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/FFWrapper/BitrateLimits.h"
#include "Kestro/FFWrapper/ChannelLayoutMapping.h"
#include "Kestro/FFWrapper/EncoderCapabilities.h"
#include "Kestro/Planner/Domain.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Text.h"
#include "Kestro/Planner/Tree.h"
#include "Kestro/Proc/FilterRecord.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResample.h"
#include "Kestro/Proc/IResample.h"
#include "Kestro/Proc/IResize.h"

namespace Kestro::Planner {
namespace {

using Kestro::Conf::ConstraintMap;
using Kestro::Conf::ConstraintRange;
using Kestro::Conf::ConstraintSet;
using Kestro::Conf::IDataHelper;
using Kestro::Conf::IFormatCodec;
using Kestro::Conf::IFormatCodecAudio;
using Kestro::Conf::IFormatCodecVideo;
using Kestro::Conf::IPreset;
using Kestro::Conf::IPropertyConstraint;
using Kestro::Conf::LayoutRecord;
using Kestro::Conf::SampleFmtRecord;
using Kestro::Conf::ValidationRuleList;
using Kestro::Core::Property;
using Kestro::Core::PropertyValueToString;
using Kestro::Proc::FilterRecord;
using Kestro::Proc::IResize;

bool IsFilterPath(const std::string& path) {
    return std::ranges::any_of(FilterRecord::All(), [&path](const FilterRecord& filter) {
        return path.starts_with(filter.classId + Property::SEPARATOR);
    });
}

/// node: the one that the helper's own constraints stand under.
void AddRequirements(const std::string& who, const std::string& node, const IDataHelper& helper,
                     Requirements& requirements) {
    ConstraintMap constraints;
    helper.FillConstraints(constraints);
    for (const auto& [key, constraint] : constraints) {
        const bool fromRoot = IsFilterPath(key) || key.starts_with(IPreset::KEY_STREAMS + Property::SEPARATOR);
        requirements.push_back({who, fromRoot ? key : Below(node, key), constraint});
    }
    ValidationRuleList rules;
    helper.FillValidationRules(rules);
    // The streams that a format node keeps are those of the tree: a setting is known by its place there.
    const std::string kept = Below(IPreset::KEY_FORMAT, IPreset::KEY_STREAMS) + Property::SEPARATOR;
    for (const auto& [unused, rule] : rules) {
        std::string path = rule->GetSecondName();
        if (path.starts_with(kept)) path.erase(0, path.find(Property::SEPARATOR, kept.size()) + 1);
        requirements.push_back({who, path, rule->GetSecondConstraint(), rule});
    }
}

bool Check(const IPropertyConstraint& constraint, const Property& value) {
    try {
        return constraint.IsValid(value);
    } catch (const Kestro::Conf::ConstraintIsNotApplicableForTypeException&) {
        return false;
    } catch (const Kestro::Core::PropertyException&) {
        return false;
    }
}

/// The layout of the list that is taken for that one: of as many channels, else of fewer, most first, else of more. For
/// one that no record knows, stereo is looked for. Null in an empty list.
const Property* NearestLayout(const Domain& domain, const std::string& wanted) {
    const auto channels = [](const std::string& layout) {
        const LayoutRecord* record = LayoutRecord::Find(layout);
        return record != nullptr ? record->channels : 0;
    };
    const int known = channels(wanted);
    const int target = known != 0 ? known : 2;
    const auto distance = [&](const Domain::Entry& entry) {
        const int more = channels(entry.value.GetString()) - target;
        return std::pair(more > 0, more > 0 ? more : -more);
    };
    const auto nearest = std::ranges::min_element(domain.entries, {}, distance);
    return nearest != domain.entries.end() ? &nearest->value : nullptr;
}

}  // namespace

bool Requirement::Applies(const Property& tree) const {
    if (tree.FindByPath(path) == nullptr) return false;
    if (!rule) return true;
    const Property* first = tree.FindByPath(rule->GetFirstName());
    return first != nullptr && Check(*rule->GetFirstConstraint(), *first);
}

bool Requirement::Accepts(const Property& value) const { return Check(*constraint, value); }

std::vector<Conf::FrameSize> Requirement::FrameSizes() const {
    std::vector<Conf::FrameSize> sizes;
    if (!path.ends_with(IResize::FRAME_SIZE_MODE)) return sizes;
    for (const Domain::Entry& entry : DescribeDomain(*constraint).entries) {
        const Property* width = entry.value.FindByPath(IFormatCodecVideo::TAG_WIDTH);
        const Property* height = entry.value.FindByPath(IFormatCodecVideo::TAG_HEIGHT);
        if (width != nullptr && height != nullptr) sizes.push_back({width->GetInt64(), height->GetInt64()});
    }
    return sizes;
}

Property Requirement::Corrected(const Property& value) const {
    Property corrected = value;
    if (LastSegment(path) == IFormatCodecAudio::TAG_LAYOUT && value.Type() == Kestro::PropertyTypes::String) {
        const Domain layouts = DescribeDomain(*constraint);
        const Property* nearest = Accepts(value) ? nullptr : NearestLayout(layouts, value.GetString());
        if (nearest != nullptr) corrected.CopyDataFrom(*nearest);
    }
    return constraint->CorrectValue(corrected) && Accepts(corrected) ? corrected : value;
}

std::string Requirement::InWords() const {
    if (rule) return Planner::InWords(*rule);
    return LastSegment(path) + " of " + who + " must be " + Planner::InWords(*constraint) + ".";
}

void RefuseValue(const Requirement& requirement, const Property& value, const std::string& userPath,
                 const std::string& message) {
    const Domain domain = DescribeDomain(*requirement.constraint);
    Problem problem{.code = ProblemCode::ValueNotAccepted,
                    .message = message,
                    .path = userPath,
                    .value = PropertyValueToString(value),
                    .allowed = AllowedValues(domain),
                    .cause = requirement.InWords()};
    if (message.empty()) problem.message = userPath + " = " + Printable(problem.value) + " is not accepted.";
    // A plain list or range speaks for itself.
    if (requirement.rule || requirement.isInstalled) {
        problem.message += problem.message.ends_with('.') ? " " : ". ";
        problem.message += problem.cause;
    }

    const Property corrected = requirement.Corrected(value);
    const std::vector<Conf::FrameSize> sizes = requirement.FrameSizes();
    if (!sizes.empty()) {
        const std::string resizer = userPath.substr(0, userPath.size() - LastSegment(userPath).size());
        problem.changes = {{userPath, IResize::FRAME_SIZE_CUSTOM},
                           {resizer + IFormatCodecVideo::TAG_WIDTH, std::to_string(sizes.front().width)},
                           {resizer + IFormatCodecVideo::TAG_HEIGHT, std::to_string(sizes.front().height)}};
    } else if (!(corrected == value)) {
        problem.changes = {{userPath, PropertyValueToString(corrected)}};
    } else {
        problem.changes = {
            {userPath, domain.entries.empty() ? "VALUE" : PropertyValueToString(domain.entries.front().value)}};
    }
    throw NotAcceptable(std::move(problem));
}

void AddFormatRequirements(const std::string& container, const IDataHelper& format, Requirements& requirements) {
    AddRequirements("the container " + container, IPreset::KEY_FORMAT, format, requirements);
}

void AddEncoderRequirements(const Conf::StreamRecord& kind, const std::string& codecId, const IDataHelper& encoder,
                            Requirements& requirements) {
    AddRequirements(codecId, kind.codecKey, encoder, requirements);
}

void AddFilterRequirements(const std::string& classId, const IDataHelper& filter, Requirements& requirements) {
    AddRequirements("the filter " + classId, classId, filter, requirements);
}

void AddInstalledEncoderRequirements(const std::string& encoderName, const Property& codec,
                                     Requirements& requirements) {
    const auto capabilities = Kestro::FFWrapper::EncoderCapabilities::Find(encoderName);
    if (!capabilities) return;
    const std::string who = "FFmpeg's encoder " + encoderName;
    const std::string resampler =
        Kestro::Proc::IFilterResample::CLASS_ID + Property::SEPARATOR + Kestro::Proc::IResample::CLASS_ID;
    const auto add = [&](const std::string& node, const std::string& tag, const auto& values) {
        if (!values.empty())
            requirements.push_back({who, Below(node, tag), ConstraintSet::Create(values), nullptr, true});
    };

    ConstraintSet::Named<int64_t> rates;
    for (const int rate : capabilities->sampleRates) rates.emplace_back(std::to_string(rate), rate);
    add(resampler, IFormatCodecAudio::TAG_SAMPLE_RATE, rates);

    // A set of texts corrects to its first entry. That is the given format in its other arrangement (planar or packed)
    // where the encoder has it, else the format that the encoder prefers.
    const auto given = SampleFmtRecord::Find(TextAt(codec, IFormatCodecAudio::TAG_SAMPLE_FORMAT));
    ConstraintSet::Named<std::string> formats;
    for (const auto code : capabilities->sampleFormats) {
        const SampleFmtRecord* record = SampleFmtRecord::Find(code);
        if (record == nullptr) continue;
        const bool isSame = given != nullptr && given->alternative == code;
        formats.emplace(isSame ? formats.begin() : formats.end(), record->name, record->name);
    }
    add(resampler, IFormatCodecAudio::TAG_SAMPLE_FORMAT, formats);

    ConstraintSet::Named<std::string> layouts;
    for (const uint64_t mask : capabilities->channelLayouts) {
        const auto code = Kestro::FFWrapper::ChannelLayoutKestroFromFFMPEG(mask);
        if (const LayoutRecord* record = LayoutRecord::Find(code)) layouts.emplace_back(record->name, record->name);
    }
    add(resampler, IFormatCodecAudio::TAG_LAYOUT, layouts);

    ConstraintSet::Named<Property::Ratio> frameRates;
    for (const auto& rate : capabilities->frameRates) {
        frameRates.emplace_back(RatioText(rate), rate);
    }
    add(Kestro::Proc::IFilterFrameRate::CLASS_ID, IFormatCodecVideo::TAG_FPS, frameRates);

    auto limits = Kestro::FFWrapper::BitrateLimits::OfVideo(encoderName);
    if (const LayoutRecord* layout = LayoutRecord::Find(TextAt(codec, IFormatCodecAudio::TAG_LAYOUT))) {
        const int64_t rate = codec[IFormatCodecAudio::TAG_SAMPLE_RATE].GetInt64();
        limits = Kestro::FFWrapper::BitrateLimits::OfAudio(encoderName, rate, layout->code);
    }
    if (limits) {
        requirements.push_back({who, Below(codec.Name(), IFormatCodec::TAG_BITRATE),
                                ConstraintRange::Create(limits->lowest, limits->highest, int64_t{0}), nullptr, true});
    }

    ConstraintSet::Named<std::string> profiles;
    for (const std::string& profile : capabilities->profiles) profiles.emplace_back(profile, profile);
    add(Below(codec.Name(), IFormatCodec::TAG_CODEC_OPTIONS_ENCODE), IFormatCodec::TAG_PROFILE, profiles);
}

}  // namespace Kestro::Planner
