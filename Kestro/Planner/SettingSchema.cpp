#include "Kestro/Planner/SettingSchema.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/SampleFmtRecord.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/Planner/Automatic.h"
#include "Kestro/Planner/Tree.h"
#include "Kestro/Proc/FilterRecord.h"
#include "Kestro/Proc/IResize.h"
#include "Kestro/Proc/KeepSource.h"

namespace Kestro::Planner {
namespace {

using Conf::IFormatCodec;
using Conf::IFormatCodecAudio;
using Conf::IFormatCodecVideo;
using Conf::IPropertyConstraint;
using Core::Property;
using Core::PropertyValueToString;
using Proc::IResize;

// As the settings tree reads a ratio's text.
constexpr const char* kRatioPattern = "^-?[0-9]+(/[0-9]*[1-9][0-9]*|[.][0-9]+)?$";

Json TypeSchema(PropertyTypes type) {
    switch (type) {
        case PropertyTypes::Bool:
            return {{"type", "boolean"}};
        case PropertyTypes::Double:
            return {{"type", "number"}};
        case PropertyTypes::Int64:
            return {{"type", "integer"}};
        case PropertyTypes::Ratio: {
            Json forms = Json::array();
            forms.push_back({{"type", "string"}, {"pattern", kRatioPattern}});
            forms.push_back({{"type", "integer"}});
            return {{"anyOf", forms}};
        }
        case PropertyTypes::String:
        case PropertyTypes::Empty:
        case PropertyTypes::Node:
            break;
    }
    return {{"type", "string"}};
}

/// The values, with the names of those that are shown by another one than their text.
Json ListSchema(const std::vector<Domain::Entry>& entries) {
    if (entries.empty()) return {{"not", Json::object()}};
    Json plain = Json::array();
    Json named = Json::array();
    std::string whole;
    for (const Domain::Entry& entry : entries) {
        const Json value = TreeJson(entry.value);
        if (entry.name == PropertyValueToString(entry.value)) {
            plain.push_back(value);
            continue;
        }
        named.push_back({{"const", value}, {"title", entry.name}});
        if (entry.value.Type() != PropertyTypes::Ratio || entry.value.GetRatio().denominator() != 1) continue;
        // A whole ratio may be written as the integer that it is.
        plain.push_back(entry.value.GetRatio().numerator());
        whole += (whole.empty() ? "" : "|") + plain.back().dump();
    }
    Json list{{"enum", plain}};
    if (plain.size() == 1) list = {{"const", plain.front()}};
    if (named.empty()) return list;
    if (!plain.empty()) named.push_back(list);
    if (!whole.empty()) named.push_back({{"type", "string"}, {"pattern", "^(" + whole + ")$"}});
    return {{"anyOf", named}};
}

void Narrow(std::optional<Property>& bound, const std::optional<Property>& other, bool isLower) {
    if (!other) return;
    if (!bound || (isLower ? other->GetDouble() > bound->GetDouble() : other->GetDouble() < bound->GetDouble())) {
        bound = other;
    }
}

/// Bounds and evenness of all the domains together.
Json BoundsSchema(const std::vector<Domain>& domains, PropertyTypes type) {
    std::optional<Property> min;
    std::optional<Property> max;
    bool isEven = false;
    for (const Domain& domain : domains) {
        Narrow(min, domain.min, true);
        Narrow(max, domain.max, false);
        isEven = isEven || domain.description == IPropertyConstraint::DESCRIPTION_ID_EVEN_SIZE;
        if (domain.description == IPropertyConstraint::DESCRIPTION_ID_DTS_BITRATE) {
            Narrow(min, Property({}, IFormatCodecAudio::MIN_DTS_BITRATE), true);
            Narrow(max, Property({}, IFormatCodecAudio::MAX_DTS_BITRATE), false);
        }
    }
    Json schema = TypeSchema(type);
    if (min) schema["minimum"] = TreeJson(*min);
    if (max) schema["maximum"] = TreeJson(*max);
    if (isEven) schema["multipleOf"] = 2;
    return schema;
}

/// The list that a text's values are of although no helper restricts it; nothing for another setting.
std::optional<Domain> VocabularyOf(const std::string& tag) {
    if (tag != IFormatCodecAudio::TAG_SAMPLE_FORMAT) return std::nullopt;
    Domain domain{.isList = true};
    for (const Conf::SampleFmtRecord& record : Conf::SampleFmtRecord::All()) {
        domain.entries.push_back({record.name, Property({}, record.name)});
    }
    return domain;
}

bool HasValue(const std::vector<Domain::Entry>& entries, const Property& value) {
    return std::ranges::any_of(entries, [&value](const Domain::Entry& entry) { return entry.value == value; });
}

std::vector<Domain> DomainsOf(const SettingRequirements& required, const std::string& tag) {
    std::vector<Domain> domains;
    for (const Requirements* all : {&required.own, &required.others}) {
        for (const Requirement& one : *all) {
            if (one.FrameSizes().empty()) domains.push_back(DescribeDomain(*one.constraint));
        }
    }
    const bool isListed = std::ranges::any_of(domains, &Domain::isList);
    const std::optional<Domain> vocabulary = isListed ? std::nullopt : VocabularyOf(tag);
    if (vocabulary) domains.push_back(*vocabulary);
    return domains;
}

}  // namespace

Json SchemaRef(const std::string& definition) { return {{"$ref", "#/$defs/" + definition}}; }

Json AtPath(const std::string& path, Json schema, bool isRequired) {
    std::vector<std::string> names = Segments(path);
    while (!names.empty()) {
        const std::string& name = names.back();
        Json object{{"type", "object"}, {"properties", {{name, std::move(schema)}}}};
        if (isRequired) object["required"] = Json::array({name});
        schema = std::move(object);
        names.pop_back();
    }
    return schema;
}

void AddToAll(Json& schema, Json step) {
    if (!schema.contains("allOf")) schema["allOf"] = Json::array();
    schema["allOf"].push_back(std::move(step));
}

Json DomainSchema(const Domain& domain, PropertyTypes type) {
    return domain.isList ? ListSchema(domain.entries) : BoundsSchema({domain}, type);
}

Json ValuesSchema(const std::string& path, const Property& known, const SettingRequirements& required) {
    const std::string tag = LastSegment(path);
    const Property* source = Proc::SourceValue(tag);
    const bool isOfFilter = Proc::FilterRecord::Find(Segments(path).front()) != nullptr;
    const auto isAccepted = [&](const Property& value) {
        const auto accepts = [&value](const Requirement& one) { return one.Accepts(value); };
        const bool keepsSource = isOfFilter && source != nullptr && value == *source;
        return std::ranges::all_of(required.own, accepts) &&
               (keepsSource || std::ranges::all_of(required.others, accepts));
    };
    const AutomaticSetting* automatic = FindAutomaticSetting(path);
    std::vector<Property> words;
    if (automatic != nullptr) words.emplace_back(Property({}, IFormatCodec::CODEC_ID_AUTO));

    const std::vector<Domain> domains = DomainsOf(required, tag);
    const auto list = std::ranges::find_if(domains, &Domain::isList);
    if (list != domains.end()) {
        std::vector<Domain::Entry> entries;
        for (const Domain::Entry& entry : list->entries) {
            if (isAccepted(entry.value)) entries.push_back(entry);
        }
        const auto prepend = [&entries](const Property& value) {
            if (!HasValue(entries, value)) entries.insert(entries.begin(), {PropertyValueToString(value), value});
        };
        if (isOfFilter && source != nullptr && isAccepted(*source)) prepend(*source);
        if (automatic != nullptr) prepend(automatic->value);
        for (const Property& word : words) prepend(word);
        return ListSchema(entries);
    }
    Json schema = BoundsSchema(domains, known.Type());
    if (isOfFilter && source != nullptr && !required.others.empty() && isAccepted(*source)) words.push_back(*source);
    if (words.empty()) return schema;
    Json forms = Json::array({schema});
    for (const Property& word : words) forms.push_back({{"const", TreeJson(word)}});
    return {{"anyOf", forms}};
}

Json FrameSizesSchema(const std::vector<Conf::FrameSize>& sizes) {
    const std::string& mode = IResize::FRAME_SIZE_MODE;
    const std::string& width = IFormatCodecVideo::TAG_WIDTH;
    const std::string& height = IFormatCodecVideo::TAG_HEIGHT;
    const Json keeps{{"const", IResize::FRAME_SIZE_ORIGINAL}};
    Json pairs = Json::array();
    for (const Conf::FrameSize& size : sizes) {
        const std::string name = std::to_string(size.width) + " x " + std::to_string(size.height);
        const Json sides{{width, {{"const", size.width}}}, {height, {{"const", size.height}}}};
        pairs.push_back({{"title", name}, {"type", "object"}, {"properties", sides}});
    }
    const Json together{
        {width, Json::array({height})}, {height, Json::array({width})}, {mode, Json::array({width, height})}};
    const Json modes = Json::array({IResize::FRAME_SIZE_ORIGINAL, IResize::FRAME_SIZE_CUSTOM});
    return {{"type", "object"},
            {"properties", {{mode, {{"enum", modes}}}}},
            {"if", AtPath(mode, keeps, true)},
            {"else", {{"type", "object"}, {"dependentRequired", together}, {"anyOf", pairs}}}};
}

}  // namespace Kestro::Planner
