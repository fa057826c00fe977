#include "Kestro/Planner/StreamSchema.h"

#include <algorithm>

#include "Kestro/Conf/DataHelpers/ConstraintSet.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Exception.h"
#include "Kestro/Planner/KnownSettings.h"
#include "Kestro/Planner/StreamObject.h"
#include "Kestro/Planner/Tree.h"
#include "Kestro/Proc/FilterRecord.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/Proc/IResize.h"
#include "Kestro/Proc/KeepSource.h"

namespace Kestro::Planner {
namespace {

using Conf::IFormatCodec;
using Conf::IFormatCodecVideo;
using Conf::IPreset;
using Conf::StreamRecord;
using Core::Property;
using Proc::FilterRecord;
using Proc::IResize;

std::string ResizerPath(const std::string& tag) {
    return Below(Below(Proc::IFilterResize::CLASS_ID, IResize::CLASS_ID), tag);
}

std::string RatePath() { return Below(Proc::IFilterFrameRate::CLASS_ID, IFormatCodecVideo::TAG_FPS); }

/// The path below the stream of a setting in the tree that rules run over, where its streams are one.
std::string BelowStream(const std::string& rulePath) {
    if (!rulePath.starts_with(IPreset::KEY_STREAMS + Property::SEPARATOR)) return rulePath;
    const std::size_t stream = IPreset::KEY_STREAMS.size() + Property::SEPARATOR.size();
    return rulePath.substr(rulePath.find(Property::SEPARATOR, stream) + Property::SEPARATOR.size());
}

boost::intrusive_ptr<Conf::IPropertyConstraint> IsText(const std::string& text) {
    return Conf::ConstraintSet::Create(Conf::ConstraintSet::Named<std::string>{{text, text}});
}

}  // namespace

StreamSchema::StreamSchema(const StreamRecord& kind, const std::string& codecId)
    : kind_(kind), codecId_(codecId), encoder_(FindHelper(CodecsOf(kind.type), codecId)) {
    known_ = KnownStreamSettings(kind, *encoder_);
    usual_.SetChild(kind.codecKey, encoder_->GetDefaultSettings());
    Requirements own;
    for (const FilterRecord& filter : FilterRecord::All()) {
        if (filter.type != kind.type) continue;
        const HelperPtr helper = FindHelper(kFilters, filter.classId);
        AddFilterRequirements(filter.classId, *helper, own);
        Proc::KeepSource(usual_.SetChild(filter.classId, helper->GetDefaultSettings()));
    }
    AddRules(own, true, own_);
    Requirements others;
    AddEncoderRequirements(kind, codecId, *encoder_, others);
    AddRules(others, false, others_);
}

std::string StreamSchema::CodecIdPath() const { return Below(kind_.codecKey, IFormatCodec::TAG_CODEC_ID); }

void StreamSchema::AddRules(const Requirements& requirements, bool isOfFilter, Rules& rules) const {
    for (const Requirement& requirement : requirements) {
        Rule rule{.path = BelowStream(requirement.path), .requirement = requirement, .conditions = {}};
        if (known_.FindByPath(rule.path) == nullptr) continue;
        const bool isSide = rule.path == ResizerPath(IFormatCodecVideo::TAG_WIDTH) ||
                            rule.path == ResizerPath(IFormatCodecVideo::TAG_HEIGHT);
        // Otherwise they are percents, or nothing.
        if (isSide && !isOfFilter) {
            rule.conditions.emplace_back(ResizerPath(IResize::FRAME_SIZE_MODE), IsText(IResize::FRAME_SIZE_CUSTOM));
        }
        if (requirement.rule) {
            const std::string first = BelowStream(requirement.rule->GetFirstName());
            const auto constraint = requirement.rule->GetFirstConstraint();
            const bool isCodec = first == CodecIdPath();
            if (isCodec ? !constraint->IsValid(Property({}, codecId_)) : known_.FindByPath(first) == nullptr) continue;
            if (!isCodec) rule.conditions.emplace_back(first, constraint);
        }
        if (rule.path == RatePath() && !isOfFilter) {
            // The codec's own rate is the same setting.
            rules.push_back(rule);
            rule.path = Below(kind_.codecKey, IFormatCodecVideo::TAG_FPS);
        }
        rules.push_back(std::move(rule));
    }
}

Requirements StreamSchema::On(const std::string& path, const Rules& rules) {
    Requirements on;
    for (const Rule& rule : rules) {
        if (rule.path == path && rule.conditions.empty()) on.push_back(rule.requirement);
    }
    return on;
}

Json StreamSchema::Values(const std::string& path, const Rules& others) const {
    const SettingRequirements required{.own = On(path, own_), .others = On(path, others)};
    return ValuesSchema(path, known_.ChildByPath(path), required);
}

Json StreamSchema::LeafOf(const std::string& path, const Property& known, const Rules& others,
                          SchemaDefinitions& definitions) const {
    Json schema = definitions.LabelRef(path);
    const std::string tag = LastSegment(path);
    if (tag == IPreset::KEY_TYPE_ID) {
        schema["const"] = TreeJson(known);  // a filter has one implementation
    } else if (tag == IFormatCodec::TAG_CODEC_ID) {
        schema["type"] = "string";
    } else {
        schema.update(Values(path, others));
    }
    const Property* usual = usual_.FindByPath(path);
    if (usual != nullptr && tag != IFormatCodec::TAG_CODEC_ID) schema["default"] = TreeJson(*usual);
    return schema;
}

Json StreamSchema::NodeOf(const std::string& path, const Property& known, const Rules& others,
                          SchemaDefinitions& definitions) const {
    Json properties = Json::object();
    for (const Property& child : known) {
        const std::string below = Below(path, child.Name());
        properties[child.Name()] =
            IsNode(child) ? NodeOf(below, child, others, definitions) : LeafOf(below, child, others, definitions);
    }
    Json schema = definitions.LabelRef(path);
    schema.update(Json{{"type", "object"}, {"properties", std::move(properties)}, {"additionalProperties", false}});
    if (path != kind_.codecKey || !NeedsQuality()) return schema;
    schema["if"] = AtPath(IFormatCodec::TAG_BITRATE_MODE, {{"const", IFormatCodec::TAG_BITRATE_MODE_VBR}}, true);
    schema["then"] = AtPath(IFormatCodec::TAG_QUALITY, Json::object(), true);
    return schema;
}

bool StreamSchema::NeedsQuality() const {
    const Requirements modes = On(Below(kind_.codecKey, IFormatCodec::TAG_BITRATE_MODE), others_);
    const Property variable({}, IFormatCodec::TAG_BITRATE_MODE_VBR);
    if (!std::ranges::all_of(modes, [&](const Requirement& one) { return one.Accepts(variable); })) return false;
    Property preset;
    preset.SetChild(IFormatCodec::TAG_CODEC_ID, codecId_);
    preset.SetChild(IFormatCodec::TAG_BITRATE_MODE, variable);
    const auto isTaken = [&] {
        Property codec = known_[kind_.codecKey];
        for (const std::string& side : {IFormatCodecVideo::TAG_WIDTH, IFormatCodecVideo::TAG_HEIGHT}) {
            codec.SetChild(side, 64);
        }
        codec.SetChild(IFormatCodecVideo::TAG_FPS, Property::Ratio(25));
        try {
            encoder_->ApplyPresetSettings(preset, codec);
        } catch (const Exception&) {
            return false;
        }
        return true;
    };
    if (isTaken()) return false;
    preset.SetChild(IFormatCodec::TAG_QUALITY, 50);
    return isTaken();
}

Json StreamSchema::FilterOf(const Property& known, SchemaDefinitions& definitions) const {
    const auto make = [&](const Rules& others) {
        Json schema = NodeOf(known.Name(), known, others, definitions);
        for (const Rule& rule : own_) {
            if (rule.path.starts_with(known.Name() + Property::SEPARATOR) && !rule.conditions.empty()) {
                AddToAll(schema, ConditionalOn(rule, 1));
            }
        }
        return schema;
    };
    const Json schema = make(others_);
    return definitions.SharedRef(schema == make({}) ? known.Name() : known.Name() + "-" + codecId_, schema);
}

Json StreamSchema::Whole(SchemaDefinitions& definitions) const {
    Json nodes = Json::object();
    for (const Property& child : known_) {
        if (child.Name() == IPreset::KEY_TYPE_ID) continue;
        nodes[child.Name()] = child.Name() == kind_.codecKey ? NodeOf(child.Name(), child, others_, definitions)
                                                             : FilterOf(child, definitions);
    }
    Json schema = StreamObject(kind_, nodes, definitions);
    AddTies(others_, schema);
    return schema;
}

Json StreamSchema::Restrictions(const Requirements& requirements) const {
    Rules rules;
    AddRules(requirements, false, rules);
    // Which codecs there are is not for one codec's stream to say.
    std::erase_if(rules, [this](const Rule& rule) { return rule.path == CodecIdPath(); });
    Json schema = Json::object();
    std::vector<std::string> done;
    for (const Rule& rule : rules) {
        if (!rule.conditions.empty() || !rule.requirement.FrameSizes().empty()) continue;
        if (std::ranges::find(done, rule.path) != done.end()) continue;
        done.push_back(rule.path);
        AddToAll(schema, AtPath(rule.path, Values(rule.path, rules), false));
    }
    AddTies(rules, schema);
    const bool isOne = !schema.empty() && schema["allOf"].size() == 1;
    return isOne ? Json(schema["allOf"].front()) : schema;
}

bool StreamSchema::IsImplied(const Rule& rule) const {
    const auto values = [](const Conf::IPropertyConstraint& constraint) {
        return DomainSchema(DescribeDomain(constraint), PropertyTypes::Int64);
    };
    const auto isOfRule = [&](const Condition& condition) {
        return std::ranges::any_of(rule.conditions, [&](const Condition& one) {
            return one.first == condition.first && values(*one.second) == values(*condition.second);
        });
    };
    return std::ranges::any_of(own_, [&](const Rule& own) {
        return own.path == rule.path && values(*own.requirement.constraint) == values(*rule.requirement.constraint) &&
               std::ranges::all_of(own.conditions, isOfRule);
    });
}

Json StreamSchema::ConditionalOn(const Rule& rule, std::size_t below) const {
    const auto at = [below](const std::string& path, const Json& values, bool isRequired) {
        std::string rest = path;
        for (std::size_t i = 0; i < below; ++i) rest.erase(0, rest.find(Property::SEPARATOR) + 1);
        return AtPath(rest, values, isRequired);
    };
    Json condition = Json::object();
    for (const auto& [path, constraint] : rule.conditions) {
        // A size alone makes the resizer's mode custom.
        const bool isMode = path == ResizerPath(IResize::FRAME_SIZE_MODE);
        const Property* usual = usual_.FindByPath(path);
        const bool holdsUnsaid = isMode ? constraint->IsValid(Property({}, IResize::FRAME_SIZE_CUSTOM))
                                        : usual != nullptr && constraint->IsValid(*usual);
        const Json values = DomainSchema(DescribeDomain(*constraint), known_.ChildByPath(path).Type());
        AddToAll(condition, at(path, values, !holdsUnsaid));
    }
    if (condition["allOf"].size() == 1) condition = Json(condition["allOf"].front());
    const bool isOwn = below > 0;
    const SettingRequirements required{.own = isOwn ? Requirements{rule.requirement} : Requirements{},
                                       .others = isOwn ? Requirements{} : Requirements{rule.requirement}};
    const Json values = ValuesSchema(rule.path, known_.ChildByPath(rule.path), required);
    return {{"if", condition}, {"then", at(rule.path, values, false)}};
}

void StreamSchema::AddTies(const Rules& rules, Json& schema) const {
    for (const Rule& rule : rules) {
        const std::vector<Conf::FrameSize> sizes = rule.requirement.FrameSizes();
        if (!rule.conditions.empty()) {
            if (!IsImplied(rule)) AddToAll(schema, ConditionalOn(rule, 0));
        } else if (!sizes.empty()) {
            const std::string resizer = rule.path.substr(0, rule.path.rfind(Property::SEPARATOR));
            AddToAll(schema, AtPath(resizer, FrameSizesSchema(sizes), false));
        }
    }
}

}  // namespace Kestro::Planner
