#include "Kestro/Planner/StreamSettings.h"

#include <algorithm>
#include <utility>

#include "Kestro/Conf/IFormatCodec.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/Planner/Automatic.h"
#include "Kestro/Planner/RuleTree.h"
#include "Kestro/Planner/Tree.h"
#include "Kestro/Proc/IResize.h"
#include "Kestro/Proc/KeepSource.h"

namespace Kestro::Planner {
namespace {

using Conf::IFormatCodec;
using Conf::IPreset;
using Core::Property;
using Core::PropertyValueToString;
using Proc::IResize;

std::optional<Property> Copy(const Property* value) { return value != nullptr ? std::optional(*value) : std::nullopt; }

bool IsChoice(Origin origin) { return origin == Origin::Default || origin == Origin::Automatic; }

bool IsCorrection(Origin origin) {
    return origin == Origin::Filter || origin == Origin::Container || origin == Origin::Encoder;
}

/// The last choice for a setting is the one that counts.
void AddChoice(Account& account, const Choice& choice) {
    const auto earlier = std::ranges::find(account.choices, choice.path, &Choice::path);
    if (earlier == account.choices.end()) {
        account.choices.push_back(choice);
    } else {
        *earlier = choice;
    }
}

}  // namespace

StreamSettings::StreamSettings(const PresetStream& stream, const Property& format)
    : stream_(stream), format_(format), codec_(stream.kind->codecKey) {}

std::string StreamSettings::PathOf(const std::string& inCodec) const {
    for (const Filter& filter : filters_) {
        std::string place;
        ForEachValue(filter.settings, filter.classId, [&](const std::string& path, const Property&) {
            if (LastSegment(path) == inCodec) place = path;
        });
        if (!place.empty()) return place;
    }
    return Below(stream_.kind->codecKey, inCodec);
}

std::string StreamSettings::InCodec(const std::string& path) const {
    const std::string own = stream_.kind->codecKey + Property::SEPARATOR;
    if (path.starts_with(own)) return path.substr(own.size());
    const bool ofFilter = std::ranges::any_of(
        filters_, [&path](const Filter& filter) { return path.starts_with(filter.classId + Property::SEPARATOR); });
    return ofFilter && codec_.ChildExists(LastSegment(path)) ? LastSegment(path) : std::string();
}

std::string StreamSettings::UserPath(const std::string& path) const {
    const bool fromRoot = path.starts_with(IPreset::KEY_FORMAT + Property::SEPARATOR) ||
                          path.starts_with(IPreset::KEY_STREAMS + Property::SEPARATOR);
    return fromRoot ? path : Below(stream_.path, path);
}

bool StreamSettings::IsAsked(const std::string& path) const {
    const std::string tag = LastSegment(path);
    const auto isValue = [&](const std::string& place) {
        const Property* value = stream_.settings.FindByPath(place);
        return value != nullptr && !Proc::IsSourceValue(tag, *value);
    };
    // A frame rate may also stand in the codec node.
    return isValue(path) || isValue(Below(stream_.kind->codecKey, tag));
}

bool StreamSettings::IsOpen(const std::string& path) const {
    const auto isAutomatic = [&](const std::string& place) {
        const AutomaticSetting* setting = FindAutomaticSetting(place);
        const Property* asked = setting != nullptr ? stream_.settings.FindByPath(place) : nullptr;
        return asked != nullptr && *asked == setting->value;
    };
    // An open rate control leaves the bitrate open.
    const std::string& codec = stream_.kind->codecKey;
    const bool isBitrate = path == Below(codec, IFormatCodec::TAG_BITRATE);
    return isAutomatic(isBitrate ? Below(codec, IFormatCodec::TAG_BITRATE_MODE) : path);
}

const Property* StreamSettings::OfInput(const std::string& path) const {
    const auto step = std::ranges::find_if(steps_, [&](const Step& one) {
        return one.origin == Origin::Input && LastSegment(one.path) == LastSegment(path);
    });
    return step != steps_.end() && step->after ? &*step->after : nullptr;
}

void StreamSettings::Set(const std::string& inCodec, const Property& value, Origin origin, const std::string& reason) {
    const Property* before = codec_.FindByPath(inCodec);
    Add({PathOf(inCodec), Copy(before), value, origin, reason});
    if (before != nullptr) {
        codec_.ChildByPath(inCodec).CopyDataFrom(value);
    } else {
        codec_.SetChild(inCodec, value);
    }
}

void StreamSettings::Take(const Property& codec, Origin origin, const Reason& reason, const Reason& reasonOfNew) {
    ForEachValue(codec_, {}, [&](const std::string& place, const Property& before) {
        const Property* after = codec.FindByPath(place);
        if (after != nullptr && *after == before) return;
        const std::string path = PathOf(place);
        Add({path, before, Copy(after), origin, reason ? reason(path, &before) : std::string()});
    });
    ForEachValue(codec, {}, [&](const std::string& place, const Property& after) {
        if (codec_.FindByPath(place) != nullptr) return;
        const std::string path = PathOf(place);
        const std::string why = reasonOfNew ? reasonOfNew(path, nullptr) : std::string();
        Add({path, {}, after, reasonOfNew ? Origin::Automatic : origin, why});
    });
    codec_.CopyDataFrom(codec);
}

void StreamSettings::Note(const std::string& path, const Property& value, Origin origin, const std::string& reason) {
    Add({path, Copy(stream_.settings.FindByPath(path)), value, origin, reason});
}

void StreamSettings::Add(Step step) {
    // What was left open was not wrong.
    if (IsCorrection(step.origin) && IsOpen(step.path)) step.origin = Origin::Automatic;
    steps_.push_back(std::move(step));
}

Property StreamSettings::AskedFilters() const {
    Property tree;
    for (const Filter& filter : filters_) tree.SetChild(filter.classId, filter.settings);
    return tree;
}

Property StreamSettings::Aligned(const Filter& filter) const {
    Property aligned = filter.settings;
    ForEachValue(filter.settings, {}, [&](const std::string& path, const Property&) {
        const std::string tag = LastSegment(path);
        if (codec_.ChildExists(tag)) aligned.ChildByPath(path).CopyDataFrom(codec_[tag]);
    });
    // A size in percent has become one in pixels; each side was scaled as it was asked for.
    const std::string mode = Below(IResize::CLASS_ID, IResize::FRAME_SIZE_MODE);
    if (TextAt(aligned, mode) == IResize::FRAME_SIZE_CUSTOM_SCALE) {
        aligned.ChildByPath(mode) = IResize::FRAME_SIZE_CUSTOM;
        aligned[IResize::CLASS_ID].SetChild(IResize::MODE, IResize::MODE_STRETCH);
    }
    return aligned;
}

Property StreamSettings::Node() const {
    Property node;
    node.SetChild(IPreset::KEY_TYPE_ID, stream_.kind->typeId);
    node.SetChild(stream_.kind->codecKey, codec_);
    for (const Filter& filter : filters_) node.SetChild(filter.classId, Aligned(filter));
    return node;
}

Property StreamSettings::RuleTree() const { return Planner::RuleTree(format_, Node()); }

Account StreamSettings::Tell() const {
    Account account;
    for (const Step& step : steps_) {
        const std::string path = UserPath(step.path);
        if (IsChoice(step.origin) && !step.reason.empty() && step.after) {
            AddChoice(account, {path, PropertyValueToString(*step.after), step.reason});
        }
        if (!IsCorrection(step.origin) || step.reason.empty()) continue;
        const auto earlier = std::ranges::find(account.corrections, path, &Correction::path);
        if (earlier == account.corrections.end()) {
            account.corrections.push_back({path, step.before, step.after, step.reason});
        } else {
            // Moved twice: the user sees where it came from and where it went.
            earlier->after = step.after;
            earlier->reason += " " + step.reason;
        }
    }
    const Property settled = Node();
    TellOpen(account, settled);
    TellUnused(account, settled);
    return account;
}

void StreamSettings::TellOpen(Account& account, const Property& settled) const {
    for (const AutomaticSetting& setting : AutomaticSettings()) {
        const Property* value = settled.FindByPath(setting.path);
        if (!IsOpen(setting.path) || value == nullptr) continue;
        const std::string path = UserPath(setting.path);
        const Property* input = OfInput(setting.path);
        const auto told = std::ranges::find(account.choices, path, &Choice::path);
        std::string reason = told != account.choices.end() ? told->reason : "what the stream's other settings ask for";
        if (input != nullptr && *input == *value) reason = "the input has " + PropertyValueToString(*value);
        AddChoice(account, {path, PropertyValueToString(*value), "auto: " + reason});
    }
}

void StreamSettings::TellUnused(Account& account, const Property& settled) const {
    ForEachValue(stream_.settings, {}, [&](const std::string& path, const Property& value) {
        const Property* final = settled.FindByPath(path);
        if ((final != nullptr && *final == value) || Proc::IsSourceValue(LastSegment(path), value)) return;
        const std::string userPath = UserPath(path);
        const auto told = [&userPath](const auto& entry) { return entry.path == userPath; };
        if (std::ranges::any_of(account.choices, told) || std::ranges::any_of(account.corrections, told)) return;
        if (final == nullptr || path.starts_with(stream_.kind->codecKey)) {
            account.notes.push_back(userPath + " = " + PropertyValueToString(value) + " has no effect here" +
                                    (final == nullptr ? "." : ": it stays " + PropertyValueToString(*final) + "."));
        } else {
            account.choices.push_back({userPath, PropertyValueToString(*final),
                                       "the preset's " + PropertyValueToString(value) + " comes to that"});
        }
    });
}

}  // namespace Kestro::Planner
