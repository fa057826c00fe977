#include "Kestro/Planner/StreamObject.h"

#include "Kestro/Conf/IPreset.h"
#include "Kestro/Planner/CheckedPreset.h"
#include "Kestro/Planner/KnownSettings.h"

namespace Kestro::Planner {
namespace {

using Conf::IPreset;
using Conf::StreamRecord;
using Core::Property;

/// What a stream holds beside its codec and filters.
void AddChoiceOfTracks(const StreamRecord& kind, Json& properties) {
    const Json examples = Json::array({PresetStream::kAllTracks, PresetStream::kNoTracks, "1,3", "eng"});
    properties[PresetStream::kTracks] = {
        {"title", "Tracks"},
        {"description", "Which of the input's tracks: all, none, or numbers and languages, parted by commas."},
        {"type", "string"},
        {"examples", examples}};
    if (kind.type != Conf::StreamType::Video) return;
    properties[PresetStream::kKeepFields] = {{"title", "Keep fields"},
                                             {"description", "Interlaced video stays interlaced."},
                                             {"type", "boolean"},
                                             {"default", false}};
}

}  // namespace

Json StreamObject(const StreamRecord& kind, const Json& nodes, SchemaDefinitions& definitions) {
    Json type = definitions.LabelRef(IPreset::KEY_TYPE_ID);
    type["const"] = kind.typeId;
    Json properties{{IPreset::KEY_TYPE_ID, type}};
    properties.update(nodes);
    AddChoiceOfTracks(kind, properties);
    const Json required = Json::array({IPreset::KEY_TYPE_ID});
    return {{"type", "object"}, {"properties", properties}, {"required", required}, {"additionalProperties", false}};
}

Json UnencodedStreamSchema(const StreamRecord& kind, SchemaDefinitions& definitions) {
    const Property known = KnownWithoutEncoder(kind);
    Json codec = Json::object();
    for (const Property& setting : known[kind.codecKey]) {
        codec[setting.Name()] = definitions.LabelRef(setting.Name());
        codec[setting.Name()]["type"] = setting.Type() == PropertyTypes::Bool ? "boolean" : "string";
    }
    Json node = definitions.LabelRef(kind.codecKey);
    node.update(Json{{"type", "object"}, {"properties", codec}, {"additionalProperties", false}});
    return StreamObject(kind, {{kind.codecKey, node}}, definitions);
}

}  // namespace Kestro::Planner
