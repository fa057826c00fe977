#include "Kestro/Planner/PresetSchema.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "Kestro/Conf/IFormatCodec.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/Planner/Domain.h"
#include "Kestro/Planner/Helpers.h"
#include "Kestro/Planner/KnownSettings.h"
#include "Kestro/Planner/Preset.h"
#include "Kestro/Planner/SchemaDefinitions.h"
#include "Kestro/Planner/SettingSchema.h"
#include "Kestro/Planner/StreamObject.h"
#include "Kestro/Planner/StreamSchema.h"
#include "Kestro/Planner/Tree.h"

namespace Kestro::Planner {
namespace {

using Conf::IFormatCodec;
using Conf::IFormatFile;
using Conf::IPreset;
using Conf::StreamRecord;
using Core::Property;

// What ParseSize reads, but for sizes of less than a byte.
constexpr const char* kSizePattern = "^([0-9]*[1-9][0-9]*([.][0-9]*)?[kKMG]?|0*[.]0*[1-9][0-9]*[kKMG])B?$";

std::string CodecIdPath(const StreamRecord& kind) { return Below(kind.codecKey, IFormatCodec::TAG_CODEC_ID); }

Json OneOf(const std::vector<std::string>& texts) { return {{"enum", texts}}; }

/// { if a stream has that type, then }.
Json IfOfType(const StreamRecord& kind, Json then) {
    const Json isKind = AtPath(IPreset::KEY_TYPE_ID, {{"const", kind.typeId}}, true);
    return {{"if", isKind}, {"then", std::move(then)}};
}

/// One container: its format node, its streams, and what ties them.
class ContainerSchema {
public:
    ContainerSchema(const std::string& container, SchemaDefinitions& definitions)
        : container_(container), definitions_(definitions), format_(FindHelper(kFormats, container)) {
        defaults_ = format_->GetDefaultSettings();
        known_ = KnownFormatSettings(*format_);
        format_->FillConstraints(constraints_);
        AddFormatRequirements(container, *format_, requirements_);
    }

    /// The properties Format and Streams, and perhaps allOf.
    Json Make() {
        Json schema{{"type", "object"},
                    {"properties", {{IPreset::KEY_FORMAT, FormatNode()}, {IPreset::KEY_STREAMS, Streams()}}}};
        AddDiscs(schema);
        return schema;
    }

private:
    Json FormatNode() {
        Json schema = FormatNode(IPreset::KEY_FORMAT, known_);
        schema["required"] = Json::array({IFormatFile::TAG_CONTAINER});
        return schema;
    }

    Json FormatNode(const std::string& path, const Property& known) {
        Json properties = Json::object();
        for (const Property& child : known) {
            const std::string below = Below(path, child.Name());
            properties[child.Name()] = IsNode(child) ? FormatNode(below, child) : FormatSetting(below, child);
        }
        Json schema = definitions_.LabelRef(path);
        schema.update(Json{{"type", "object"}, {"properties", std::move(properties)}, {"additionalProperties", false}});
        return schema;
    }

    Json FormatSetting(const std::string& path, const Property& known) {
        Json schema = definitions_.LabelRef(path);
        if (known.Name() == IFormatFile::TAG_CONTAINER) {
            schema["const"] = container_;
            return schema;
        }
        SettingRequirements required;
        std::ranges::copy_if(requirements_, std::back_inserter(required.own),
                             [&path](const Requirement& one) { return one.path == path && !one.rule; });
        schema.update(ValuesSchema(path, known, required));
        const std::string below = path.substr(IPreset::KEY_FORMAT.size() + Property::SEPARATOR.size());
        if (const Property* usual = defaults_.FindByPath(below)) schema["default"] = TreeJson(*usual);
        return schema;
    }

    /// The codecs that the container takes; none where it takes no stream of the kind.
    std::vector<std::string> Codecs(const StreamRecord& kind) const {
        const auto found = constraints_.find(kind.CodecIdPath());
        if (found == constraints_.end()) return {};
        return AllowedValues(DescribeDomain(*found->second));
    }

    Json Streams() {
        std::vector<std::string> types;
        Json stream{{"type", "object"}};
        for (const StreamRecord& kind : StreamRecord::All()) {
            if (Codecs(kind).empty()) continue;
            types.push_back(kind.typeId);
            AddToAll(stream, IfOfType(kind, kind.HasHelpers() ? Encoded(kind) : Unencoded(kind)));
        }
        Json type = definitions_.LabelRef(IPreset::KEY_TYPE_ID);
        type.update(OneOf(types));
        stream["properties"] = {{IPreset::KEY_TYPE_ID, type}};
        stream["required"] = Json::array({IPreset::KEY_TYPE_ID});
        Json schema = definitions_.LabelRef(IPreset::KEY_STREAMS);
        schema.update(Json{{"type", "array"}, {"minItems", 1}, {"items", stream}});
        return schema;
    }

    Json Unencoded(const StreamRecord& kind) {
        std::vector<std::string> words = Codecs(kind);
        words.push_back(IFormatCodec::CODEC_ID_AUTO);
        Json schema = AtPath(CodecIdPath(kind), OneOf(words), false);
        AddToAll(schema, definitions_.Ref(kind.typeId, [&] { return UnencodedStreamSchema(kind, definitions_); }));
        return schema;
    }

    Json Encoded(const StreamRecord& kind) {
        const std::string codecId = CodecIdPath(kind);
        const std::vector<std::string> codecs = Codecs(kind);
        const Property* standard = defaults_.FindByPath(kind.CodecIdPath());
        std::vector<std::string> words = codecs;
        const char* const copy = Preset::kCopy;
        words.emplace_back(copy);
        if (standard != nullptr) words.push_back(IFormatCodec::CODEC_ID_AUTO);
        Json schema = AtPath(codecId, OneOf(words), standard == nullptr);
        for (const std::string& codec : codecs) AddIfNamed(schema, kind, codec, StreamRef(kind, codec));
        AddIfNamed(schema, kind, Preset::kCopy,
                   definitions_.Ref(kind.typeId + "-copy", [&] { return UnencodedStreamSchema(kind, definitions_); }));
        if (standard != nullptr) {
            const Json isOpen = AtPath(codecId, {{"const", IFormatCodec::CODEC_ID_AUTO}}, false);
            AddToAll(schema, {{"if", isOpen}, {"then", StreamRef(kind, standard->GetString())}});
        }
        // Codecs of which the container wants the same stand together.
        std::map<Json, std::vector<std::string>> byRestrictions;
        for (const std::string& codec : codecs) {
            const Json restrictions = StreamSchema(kind, codec).Restrictions(requirements_);
            if (!restrictions.empty()) byRestrictions[restrictions].push_back(codec);
        }
        for (auto& [restrictions, named] : byRestrictions) {
            const bool isStandard =
                standard != nullptr && std::ranges::find(named, standard->GetString()) != named.end();
            if (isStandard) named.push_back(IFormatCodec::CODEC_ID_AUTO);
            AddToAll(schema, {{"if", AtPath(codecId, OneOf(named), !isStandard)}, {"then", restrictions}});
        }
        return schema;
    }

    static void AddIfNamed(Json& schema, const StreamRecord& kind, const std::string& codec, const Json& then) {
        AddToAll(schema, {{"if", AtPath(CodecIdPath(kind), {{"const", codec}}, true)}, {"then", then}});
    }

    Json StreamRef(const StreamRecord& kind, const std::string& codec) {
        return definitions_.Ref(kind.typeId + "-" + codec,
                                [&] { return StreamSchema(kind, codec).Whole(definitions_); });
    }

    /// What a disc wants of the picture, for each of its television systems.
    void AddDiscs(Json& schema) const {
        const auto found = constraints_.find(IFormatFile::TAG_DVD_STANDARD);
        if (found == constraints_.end()) return;
        const StreamRecord& video = StreamRecord::Find(Conf::StreamType::Video);
        const std::string path = Below(IPreset::KEY_FORMAT, IFormatFile::TAG_DVD_STANDARD);
        const Property* usual = defaults_.FindByPath(IFormatFile::TAG_DVD_STANDARD);
        for (const Domain::Entry& entry : DescribeDomain(*found->second).entries) {
            Property format = defaults_;
            format.SetChild(IFormatFile::TAG_DVD_STANDARD, entry.value);
            Requirements requirements;
            AddDiscRequirements(format, requirements);
            if (requirements.empty()) continue;
            const Json restrictions = StreamSchema(video, Codecs(video).front()).Restrictions(requirements);
            const Json isStandard =
                AtPath(path, {{"const", TreeJson(entry.value)}}, usual == nullptr || !(*usual == entry.value));
            const Json streams{{"type", "array"}, {"items", IfOfType(video, restrictions)}};
            AddToAll(schema, {{"if", isStandard}, {"then", AtPath(IPreset::KEY_STREAMS, streams, false)}});
        }
    }

    const std::string container_;
    SchemaDefinitions& definitions_;
    HelperPtr format_;
    Property defaults_;
    Property known_;
    Conf::ConstraintMap constraints_;
    Requirements requirements_;
};

Json SizeSchema() {
    Json forms = Json::array();
    forms.push_back({{"type", "integer"}, {"minimum", 1}});
    forms.push_back({{"type", "string"}, {"pattern", kSizePattern}});
    return {{"title", "Size"},
            {"description", "The output is not larger, and little smaller: bytes, or a text as 800k, 25M and 1.5G."},
            {"anyOf", forms}};
}

/// Any container: what is common, and by its name the rest.
Json AnyContainer(SchemaDefinitions& definitions) {
    const std::vector<std::string> names = HelperNames(kFormats);
    const std::string path = Below(IPreset::KEY_FORMAT, IFormatFile::TAG_CONTAINER);
    Json container = definitions.LabelRef(path);
    container.update(OneOf(names));
    Json schema = AtPath(path, container, true);
    schema["properties"][IPreset::KEY_STREAMS] = {{"type", "array"}, {"minItems", 1}};
    for (const std::string& name : names) {
        const Json then = definitions.Ref("format-" + name, [&] { return ContainerSchema(name, definitions).Make(); });
        AddToAll(schema, {{"if", AtPath(path, {{"const", name}}, true)}, {"then", then}});
    }
    return schema;
}

}  // namespace

std::string PresetSchema(const std::string& container) {
    SchemaDefinitions definitions;
    Json body = container.empty() ? AnyContainer(definitions) : ContainerSchema(container, definitions).Make();
    body["properties"][Preset::KEY_SIZE] = SizeSchema();
    body["required"] = Json::array({IPreset::KEY_FORMAT});
    body["additionalProperties"] = false;
    Json schema{{"$schema", "https://json-schema.org/draft/2020-12/schema"},
                {"title", container.empty() ? "Preset" : "Preset for " + container}};
    schema.update(body);
    schema["$defs"] = definitions.Take();
    // With blanks it would be twice as large.
    return schema.dump(container.empty() ? -1 : 1);
}

}  // namespace Kestro::Planner
