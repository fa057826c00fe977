#include "Kestro/Planner/Json.h"

#include <optional>

#include "Kestro/Planner/JsonTree.h"
#include "Kestro/Planner/Text.h"

namespace Kestro::Planner {
namespace {

using Conf::StreamType;
using Core::Property;

std::string Dump(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

Json OptionalJson(const std::optional<Property>& value) { return value ? TreeJson(*value) : Json(); }

Json MasteringJson(const MasteringDisplay& mastering) {
    return {{"chromaticities", mastering.chromaticities},
            {"maxLuminance", mastering.maxLuminance},
            {"minLuminance", mastering.minLuminance},
            {"maxContentLight", mastering.maxContentLight},
            {"maxAverageLight", mastering.maxAverageLight}};
}

Json VideoJson(const MediaStream& stream) {
    Json json{{"width", stream.width},
              {"height", stream.height},
              {"sampleAspectRatio", RatioText(stream.sampleAspectRatio)},
              {"fps", RatioText(stream.fps)},
              {"bitDepth", stream.bitDepth}};
    const auto addIfTold = [&json](const char* name, const std::string& value) {
        if (!value.empty()) json[name] = value;
    };
    if (stream.rotation != 0) json["rotation"] = stream.rotation;
    if (stream.hasAlpha) json["alpha"] = true;
    if (stream.isInterlaced) json["interlaced"] = stream.isBottomFieldFirst ? "bottom" : "top";
    addIfTold("primaries", stream.colour.primaries);
    addIfTold("transfer", stream.colour.transfer);
    addIfTold("matrix", stream.colour.matrix);
    addIfTold("range", stream.colour.range);
    if (stream.mastering) json["mastering"] = MasteringJson(*stream.mastering);
    return json;
}

Json StreamJson(const MediaStream& stream) {
    Json json{{"index", stream.index}, {"type", TypeName(stream)}, {"codec", stream.codec}};
    if (stream.codecTag != 0) json["tag"] = stream.codecTag;
    if (!stream.language.empty()) json["language"] = stream.language;
    if (!stream.title.empty()) json["title"] = stream.title;
    if (stream.isDefault) json["default"] = true;
    if (stream.isForced) json["forced"] = true;
    if (stream.type == StreamType::Video) {
        json.update(VideoJson(stream));
    } else if (stream.type == StreamType::Audio) {
        json["sampleRate"] = stream.sampleRate;
        json["layout"] = stream.layout;
        json["sampleFormat"] = stream.sampleFormat;
        if (stream.bitDepth > 0) json["bitDepth"] = stream.bitDepth;
    }
    return json;
}

Json PixelsJson(const Pixels& pixels) {
    return {{"format", pixels.format.empty() ? Json() : Json(pixels.format)},
            {"bitDepth", pixels.bitDepth},
            {"toneMapped", pixels.isToneMapped},
            {"deinterlaced", pixels.isDeinterlaced},
            {"interlaced", pixels.isInterlaced}};
}

Json MediaJson(const MediaInfo& media) {
    Json json{{"path", media.path},
              {"demuxer", media.demuxer},
              {"duration", media.duration ? Json(*media.duration) : Json()},
              {"chapters", media.chapters}};
    if (const auto& sequence = media.sequence) {
        json["sequence"] = {{"fps", RatioText(sequence->fps)}, {"first", sequence->first}, {"count", sequence->count}};
    }
    Json& streams = json["streams"] = Json::array();
    for (const MediaStream& stream : media.streams) streams.push_back(StreamJson(stream));
    return json;
}

}  // namespace

std::string ToJson(const Plan& plan) {
    Json json{{"input", MediaJson(plan.input)}, {"container", plan.container}};
    json["muxer"] = plan.muxer;
    json["globalHeader"] = plan.globalHeader;
    Json& streams = json["streams"] = Json::array();
    for (const PlannedStream& stream : plan.streams) {
        Json& made = streams.emplace_back(Json{{"path", stream.path},
                                               {"type", stream.kind->typeId},
                                               {"inputStream", stream.source.index},
                                               {"codec", stream.codecId},
                                               {"copied", stream.isCopied},
                                               {"encoder", stream.encoder.empty() ? Json() : Json(stream.encoder)},
                                               {"globalHeader", stream.globalHeader},
                                               {"supported", stream.isSupported}});
        if (stream.kind->type == StreamType::Video && !stream.isCopied) made["pixels"] = PixelsJson(stream.pixels);
    }
    json["attachments"] = plan.attachments;
    json["settings"] = TreeJson(plan.settings);
    Json& choices = json["choices"] = Json::array();
    for (const Choice& choice : plan.choices) {
        choices.push_back({{"path", choice.path}, {"value", choice.value}, {"reason", choice.reason}});
    }
    Json& corrections = json["corrections"] = Json::array();
    for (const Correction& correction : plan.corrections) {
        corrections.push_back({{"path", correction.path},
                               {"before", OptionalJson(correction.before)},
                               {"after", OptionalJson(correction.after)},
                               {"reason", correction.reason}});
    }
    json["notes"] = plan.notes;
    json["sizeLimit"] = plan.sizeLimit ? Json(*plan.sizeLimit) : Json();
    return Dump(json);
}

std::string ToJson(const MediaInfo& media) { return Dump(MediaJson(media)); }

std::string ToJson(const Property& settings) { return Dump(TreeJson(settings)); }

}  // namespace Kestro::Planner
