#include "Kestro/Planner/KnownSettings.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Conf/StreamRecord.h"
#include "Kestro/Core/PropertyException.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/Planner/Collect.h"
#include "Kestro/Planner/Domain.h"
#include "Kestro/Planner/Helpers.h"
#include "Kestro/Planner/Text.h"
#include "Kestro/Planner/Tree.h"
#include "Kestro/Proc/FilterRecord.h"

namespace Kestro::Planner {
namespace {

using Kestro::PropertyTypes;
using Kestro::Conf::ConstraintMap;
using Kestro::Conf::IDataHelper;
using Kestro::Conf::IFormatCodec;
using Kestro::Conf::IFormatCodecVideo;
using Kestro::Conf::IPreset;
using Kestro::Conf::StreamRecord;
using Kestro::Conf::StreamType;
using Kestro::Core::Property;
using Kestro::Core::PropertyValueToString;
using Kestro::Proc::FilterRecord;

/// What encoders take from a preset beyond their defaults and constraints; the value stands for the type.
Property AlsoTaken(StreamType type) {
    Property codec;
    codec.SetChild(IFormatCodec::TAG_BITRATE_MODE, IFormatCodec::TAG_BITRATE_MODE_CBR);
    codec.SetChild(IFormatCodec::TAG_BITRATE, 0);
    codec.SetChild(IFormatCodec::TAG_QUALITY, 1);
    if (type != StreamType::Video) return codec;
    codec.SetChild(IFormatCodecVideo::TAG_FPS, Property::Ratio(0));
    codec.SetChild(IFormatCodecVideo::TAG_MAX_I_FRAME_INTERVAL, 0);
    codec.SetChild(IFormatCodecVideo::TAG_MAX_B_FRAME_SEQUENCE, 0);
    codec.SetChild(IFormatCodec::TAG_THREAD_NUMBER, 0);
    codec.SetChild(IFormatCodec::TAG_UTILIZE_ALL_RESOURCES, true);
    codec.SetChild(IFormatCodec::TAG_MULTIPASS_ENCODING, IFormatCodec::TAG_ONE_PASS_MODE);
    codec.SetChild(IFormatCodecVideo::TAG_BITS_PER_PIXEL, 0);
    codec.SetChild(IFormatCodecVideo::TAG_COVER_FLAG, false);
    codec.SetChild(IFormatCodec::TAG_CODEC_OPTIONS_ENCODE)
        .SetChild(IFormatCodecVideo::TAG_APPROVED_VBR_MODE_ONLY, true);
    return codec;
}

/// A value that the constraint knows of; 0 where it only tells right from wrong, which is done to numbers.
Property Example(const Kestro::Conf::IPropertyConstraint& constraint) {
    const Domain domain = DescribeDomain(constraint);
    if (!domain.entries.empty()) return domain.entries.front().value;
    return domain.min.value_or(Property({}, 0));
}

/// Adds the settings that are constrained but have no default.
void CompleteWithConstraints(Property& known, const ConstraintMap& constraints) {
    for (const auto& [path, constraint] : constraints) {
        Property more;
        Property* node = &more;
        for (const std::string& name : Segments(path)) node = &node->SetChild(name);
        node->CopyDataFrom(Example(*constraint));
        Complete(known, more);
    }
}

const char* TypeInWords(PropertyTypes type) {
    switch (type) {
        case PropertyTypes::Bool:
            return "true or false";
        case PropertyTypes::Double:
            return "a number";
        case PropertyTypes::Int64:
            return "an integer";
        case PropertyTypes::String:
            return "a text";
        case PropertyTypes::Ratio:
            return "a ratio, as the text \"30000/1001\"";
        case PropertyTypes::Empty:
        case PropertyTypes::Node:
            break;
    }
    return "a node with settings of its own";
}

std::string ValueText(const Property& value) {
    if (IsNode(value)) return "a node";
    const std::string text = Printable(PropertyValueToString(value));
    return value.Type() == PropertyTypes::String ? "\"" + text + "\"" : text;
}

[[noreturn]] void ThrowWrongType(const std::string& path, const std::string& value, PropertyTypes wanted) {
    throw NotAcceptable({.code = ProblemCode::WrongType,
                         .message = path + " must be " + TypeInWords(wanted) + ", not " + value + ".",
                         .path = path,
                         .value = value});
}

/// Reads the whole text as a value of the type, or throws.
Property Parse(const std::string& text, PropertyTypes type, const std::string& path) {
    const Property given(path, text);
    try {
        switch (type) {
            case PropertyTypes::Bool:
                return {{}, given.GetBool()};
            case PropertyTypes::Double:
                return {{}, given.GetDouble()};
            case PropertyTypes::Ratio:
                return {{}, given.GetRatio()};
            case PropertyTypes::Int64: {
                // Property would also read "2.5", and cut it off.
                int64_t value = 0;
                const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
                if (read.ec != std::errc() || read.ptr != text.data() + text.size()) break;
                return {{}, value};
            }
            case PropertyTypes::String:
                return {{}, text};
            case PropertyTypes::Empty:
            case PropertyTypes::Node:
                break;
        }
    } catch (const Kestro::Core::PropertyException&) {
        // Said below, in the words for a setting.
    }
    ThrowWrongType(path, Printable(text), type);
}

void CheckType(Property& value, PropertyTypes wanted, const std::string& path) {
    if (value.Type() == wanted) return;
    if (wanted == PropertyTypes::Ratio && value.Type() == PropertyTypes::String) {
        value = Parse(value.GetString(), wanted, path);
    } else if (wanted == PropertyTypes::Ratio && value.Type() == PropertyTypes::Int64) {
        value = value.GetRatio();
    } else if (wanted == PropertyTypes::Double && value.Type() == PropertyTypes::Int64) {
        value = value.GetDouble();
    } else {
        ThrowWrongType(path, ValueText(value), wanted);
    }
}

std::vector<std::string> ChildNames(const Property& node) {
    std::vector<std::string> names;
    for (const Property& child : node) names.push_back(child.Name());
    return names;
}

/// The path below the node of the setting of that name; empty when there is none.
std::string PathOf(const Property& node, const std::string& name) {
    for (const Property& child : node) {
        if (child.Name() == name) return name;
        const std::string below = PathOf(child, name);
        if (!below.empty()) return child.Name() + Property::SEPARATOR + below;
    }
    return {};
}

/// The known settings that a check began with, and where they stand in the preset.
struct Start {
    const Property& known;
    const std::string& path;
};

[[noreturn]] void ThrowUnknown(const std::string& path, const std::string& name, const Property& knownHere,
                               const Start& start) {
    const std::vector<std::string> names = ChildNames(knownHere);
    std::string hint = DidYouMean(name, names);
    const std::string elsewhere = PathOf(start.known, name);
    if (hint.empty() && !elsewhere.empty()) {
        hint = " Did you mean \"" + Below(start.path, elsewhere) + "\"?";
    }
    throw NotAcceptable({.code = ProblemCode::UnknownSetting,
                         .message = "Unknown setting \"" + Printable(Below(path, name)) + "\"." + hint,
                         .path = Below(path, name),
                         .allowed = names});
}

void CheckBelow(Property& settings, const Property& known, const std::string& path, const Start& start) {
    if (!IsNode(settings)) ThrowWrongType(path, ValueText(settings), PropertyTypes::Node);
    Collector problems;
    for (std::size_t i = 0; i < settings.Count(); ++i) {
        const std::string name = settings[i].Name();
        const std::string childPath = Below(path, name);
        problems.From([&] {
            if (!known.ChildExists(name)) ThrowUnknown(path, name, known, start);
            if (IsNode(known[name])) {
                CheckBelow(settings[name], known[name], childPath, start);
            } else {
                CheckType(settings[name], known[name].Type(), childPath);
            }
        });
    }
    problems.Throw();
}

}  // namespace

Property KnownFormatSettings(const IDataHelper& format) {
    Property known = format.GetDefaultSettings();
    known.RemoveChild(IPreset::KEY_STREAMS);  // They stand beside the format in a preset.
    ConstraintMap constraints;
    format.FillConstraints(constraints);
    std::erase_if(constraints, [](const auto& entry) { return entry.first.starts_with(IPreset::KEY_STREAMS); });
    CompleteWithConstraints(known, constraints);
    return known;
}

Property KnownStreamSettings(const StreamRecord& kind, const IDataHelper& encoder) {
    Property known;
    known.SetChild(IPreset::KEY_TYPE_ID, kind.typeId);
    Property& codec = known.SetChild(kind.codecKey, encoder.GetDefaultSettings());
    for (const FilterRecord& filter : FilterRecord::All()) {
        if (filter.type != kind.type) continue;
        const HelperPtr helper = FindHelper(kFilters, filter.classId);
        Property& node = known.SetChild(filter.classId, helper->GetDefaultSettings());
        ConstraintMap constraints;
        helper->FillConstraints(constraints);
        CompleteWithConstraints(node, constraints);
    }
    // An encoder's constraint on a filter's setting stands under the filter's name; there it is known already.
    ConstraintMap constraints;
    encoder.FillConstraints(constraints);
    std::erase_if(constraints, [&](const auto& entry) { return known.FindByPath(entry.first) != nullptr; });
    CompleteWithConstraints(codec, constraints);
    Complete(codec, AlsoTaken(kind.type));
    return known;
}

Property KnownWithoutEncoder(const StreamRecord& kind) {
    Property known;
    known.SetChild(IPreset::KEY_TYPE_ID, kind.typeId);
    Property& codec = known.SetChild(kind.codecKey);
    codec.SetChild(IFormatCodec::TAG_CODEC_ID, kind.typeId);
    if (kind.type == StreamType::Video) codec.SetChild(IFormatCodecVideo::TAG_COVER_FLAG, true);
    return known;
}

void CheckSettings(Property& settings, const Property& known, const std::string& path) {
    CheckBelow(settings, known, path, {known, path});
}

void SetSetting(Property& settings, const Property& known, const std::string& path, const std::string& below,
                const std::string& value) {
    const Property* knownNode = &known;
    std::string nodePath = path;
    for (const std::string& name : Segments(below)) {
        if (!knownNode->ChildExists(name)) ThrowUnknown(nodePath, name, *knownNode, {known, path});
        knownNode = &(*knownNode)[name];
        nodePath = Below(nodePath, name);
    }
    if (IsNode(*knownNode)) ThrowWrongType(nodePath, "\"" + Printable(value) + "\"", PropertyTypes::Node);
    const Property read = Parse(value, knownNode->Type(), nodePath);
    Property* node = &settings;
    for (const std::string& name : Segments(below)) {
        node = node->ChildExists(name) ? &(*node)[name] : &node->SetChild(name);
    }
    node->CopyDataFrom(read);
}

}  // namespace Kestro::Planner
