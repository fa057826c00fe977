#include "Kestro/Planner/FitUnasked.h"

#include <algorithm>
#include <cstdlib>

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/Planner/RateControl.h"
#include "Kestro/Planner/Text.h"
#include "Kestro/Planner/Tree.h"
#include "Kestro/Proc/IFilterResample.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/Proc/IResize.h"
#include "Kestro/Proc/KeepSource.h"

namespace Kestro::Planner {
namespace {

using Conf::FrameSize;
using Conf::IFormatCodecAudio;
using Conf::IFormatCodecVideo;
using Core::Property;
using Core::PropertyValueToString;
using Proc::IResize;

// Two rules may push a value to and fro; then it is refused in the end.
constexpr int kMaxFits = 8;

FrameSize SizeOf(const Property& codec) {
    return {codec[IFormatCodecVideo::TAG_WIDTH].GetInt64(), codec[IFormatCodecVideo::TAG_HEIGHT].GetInt64()};
}

/// The codec node that the resizer makes of a size of its own.
Property Resized(StreamSettings& settings, const FrameSize& size) {
    Property codec = settings.Codec();
    for (StreamSettings::Filter& filter : settings.Filters()) {
        if (filter.classId != Proc::IFilterResize::CLASS_ID) continue;
        Property& resizer = filter.settings[IResize::CLASS_ID];
        resizer.SetChild(IResize::FRAME_SIZE_MODE, IResize::FRAME_SIZE_CUSTOM);
        resizer.SetChild(IFormatCodecVideo::TAG_WIDTH, size.width);
        resizer.SetChild(IFormatCodecVideo::TAG_HEIGHT, size.height);
        filter.helper->ApplyPresetSettings(filter.settings, codec);
    }
    return codec;
}

void FitFrameSize(StreamSettings& settings, const Requirement& requirement, const Requirements& requirements) {
    const std::string& widthTag = IFormatCodecVideo::TAG_WIDTH;
    const std::string& heightTag = IFormatCodecVideo::TAG_HEIGHT;
    if (settings.IsAsked(requirement.path) || settings.IsAsked(settings.PathOf(widthTag)) ||
        settings.IsAsked(settings.PathOf(heightTag))) {
        return;
    }
    const FrameSize before = SizeOf(settings.Codec());
    // Sizes at which the frame rate may stay come first, and of those the nearest.
    const auto changesRate = [&](const FrameSize& size) {
        StreamSettings other = settings;
        other.Set(widthTag, Property({}, size.width), Origin::Filter);
        other.Set(heightTag, Property({}, size.height), Origin::Filter);
        const Property tree = other.RuleTree();
        return std::ranges::any_of(requirements, [&](const Requirement& one) {
            return LastSegment(one.path) == IFormatCodecVideo::TAG_FPS && one.Applies(tree) && !IsMet(one, other, tree);
        });
    };
    const auto order = [&](const FrameSize& size) {
        return std::pair(changesRate(size),
                         std::abs(size.width - before.width) + std::abs(size.height - before.height));
    };
    const std::vector<FrameSize> sizes = requirement.FrameSizes();
    const Property codec = Resized(settings, *std::ranges::min_element(sizes, {}, order));
    settings.Take(codec, Origin::Container, [&](const std::string& path, const Property*) {
        const std::string tag = LastSegment(path);
        return tag == widthTag || tag == heightTag ? requirement.InWords() : std::string();
    });
}

/// What is asked for stays, or is refused; but a rate goes to the nearest that can be had.
bool MayMove(const StreamSettings& settings, const std::string& path, const Property& value, const Property& nearest) {
    return !settings.IsAsked(path) || IsMovableRate(LastSegment(path), value, nearest);
}

void AlignSamples(StreamSettings& settings) {
    for (const StreamSettings::Filter& filter : settings.Filters()) {
        if (filter.classId != Proc::IFilterResample::CLASS_ID) continue;
        // It brings the size of a sample in line.
        Property codec = settings.Codec();
        filter.helper->ApplyPresetSettings(settings.Aligned(filter), codec);
        settings.Take(codec, Origin::Filter);
    }
}

}  // namespace

bool IsMet(const Requirement& requirement, const StreamSettings& settings, const Property& tree) {
    const std::vector<FrameSize> sizes = requirement.FrameSizes();
    if (!sizes.empty()) return std::ranges::find(sizes, SizeOf(settings.Codec())) != sizes.end();
    if (requirement.Accepts(tree.ChildByPath(requirement.path))) return true;
    const Property asked = settings.AskedFilters();
    const Property* kept = asked.FindByPath(requirement.path);
    return kept != nullptr && Proc::IsSourceValue(LastSegment(requirement.path), *kept) && requirement.Accepts(*kept);
}

std::string WhyMoved(const Requirement& broken, const Requirements& requirements, const StreamSettings& settings,
                     const Property& tree) {
    const Property* input = settings.OfInput(broken.path);
    if (!settings.IsOpen(broken.path) || input == nullptr) return broken.InWords();
    std::vector<std::string> takers;
    for (const Requirement& requirement : requirements) {
        if (requirement.path != broken.path || !requirement.Applies(tree) || requirement.Accepts(*input)) continue;
        // The installed encoder mostly repeats what is known of the codec.
        if (requirement.isInstalled && !takers.empty()) continue;
        if (std::ranges::find(takers, requirement.who) == takers.end()) takers.push_back(requirement.who);
    }
    return "nearest to the input's " + PropertyValueToString(*input) + " that " + Join(takers, " and ") +
           (takers.size() == 1 ? " takes" : " take");
}

void FitUnasked(StreamSettings& settings, const Requirements& requirements, const std::string& codecKey,
                bool codecSettingsToo) {
    for (const Requirement& requirement : requirements) {
        if (requirement.FrameSizes().empty()) continue;
        const Property tree = settings.RuleTree();
        if (requirement.Applies(tree) && !IsMet(requirement, settings, tree)) {
            FitFrameSize(settings, requirement, requirements);
        }
    }
    for (int round = 0; round < kMaxFits; ++round) {
        const Property tree = settings.RuleTree();
        const auto broken = std::ranges::find_if(requirements, [&](const Requirement& requirement) {
            if (!requirement.Applies(tree)) return false;
            if (settings.InCodec(requirement.path).empty()) return false;
            if (!codecSettingsToo && requirement.path.starts_with(codecKey)) return false;
            const Property& value = tree.ChildByPath(requirement.path);
            const Property nearest = requirement.Corrected(value);
            return !IsMet(requirement, settings, tree) && !(nearest == value) &&
                   MayMove(settings, requirement.path, value, nearest);
        });
        if (broken == requirements.end()) return;
        const Property& before = tree.ChildByPath(broken->path);
        const std::string place = settings.InCodec(broken->path);
        if (LastSegment(broken->path) == IFormatCodecAudio::TAG_SAMPLE_FORMAT) {
            settings.Set(place, broken->Corrected(before), Origin::Automatic,
                         "the samples that " + broken->who + " takes");
            AlignSamples(settings);
            continue;
        }
        std::string reason = WhyMoved(*broken, requirements, settings, tree);
        if (!settings.IsOpen(broken->path) || settings.OfInput(broken->path) == nullptr) {
            const bool isInput = !broken->path.starts_with(codecKey);
            const std::string whose = isInput ? "The input has " : "The default is ";
            reason = (settings.IsAsked(broken->path) ? "The nearest that can be had"
                                                     : whose + PropertyValueToString(before)) +
                     ". " + reason;
        }
        settings.Set(place, broken->Corrected(before), Origin::Encoder, reason);
    }
}

}  // namespace Kestro::Planner
