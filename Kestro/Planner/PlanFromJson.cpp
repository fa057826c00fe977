#include <algorithm>

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Core/PropertyException.h"
#include "Kestro/FFWrapper/Demuxers.h"
#include "Kestro/FFWrapper/MuxerNames.h"
#include "Kestro/Planner/FrameRateRange.h"
#include "Kestro/Planner/Helpers.h"
#include "Kestro/Planner/Json.h"
#include "Kestro/Planner/JsonReader.h"
#include "Kestro/Planner/KnownSettings.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/StreamCopy.h"
#include "Kestro/Planner/Text.h"
#include "Kestro/Planner/Tree.h"

namespace Kestro::Planner {
namespace {

using Conf::IFormatCodecAudio;
using Conf::IFormatCodecVideo;
using Conf::IPreset;
using Conf::StreamRecord;
using Conf::StreamType;
using Core::Property;

void ReadVideo(const JsonReader& json, MediaStream& stream) {
    stream.width = json.Read<int64_t>("width");
    stream.height = json.Read<int64_t>("height");
    stream.sampleAspectRatio = json.ReadRatio("sampleAspectRatio");
    stream.fps = json.ReadRatio("fps");
    stream.bitDepth = json.Read<int64_t>("bitDepth");
    stream.rotation = json.ReadOr("rotation", int64_t{0});
    stream.hasAlpha = json.ReadOr("alpha", false);
    stream.isInterlaced = json.Has("interlaced");
    stream.isBottomFieldFirst = stream.isInterlaced && json.Read<std::string>("interlaced") == "bottom";
    const std::string none;
    stream.colour = {.primaries = json.ReadOr("primaries", none),
                     .transfer = json.ReadOr("transfer", none),
                     .matrix = json.ReadOr("matrix", none),
                     .range = json.ReadOr("range", none)};
    if (!json.Has("mastering")) return;
    const JsonReader mastering = json.Object("mastering");
    stream.mastering = {.chromaticities = mastering.Read<std::array<int64_t, 8>>("chromaticities"),
                        .maxLuminance = mastering.Read<int64_t>("maxLuminance"),
                        .minLuminance = mastering.Read<int64_t>("minLuminance"),
                        .maxContentLight = mastering.Read<int64_t>("maxContentLight"),
                        .maxAverageLight = mastering.Read<int64_t>("maxAverageLight")};
}

MediaStream ReadStream(const JsonReader& json) {
    MediaStream stream{.index = json.Read<int>("index"), .type = {}, .codec = json.Read<std::string>("codec")};
    const auto type = json.Read<std::string>("type");
    const StreamRecord* kind = StreamRecord::Find(type);
    stream.codecTag = json.ReadOr("tag", int64_t{0});
    stream.language = json.ReadOr("language", std::string());
    stream.title = json.ReadOr("title", std::string());
    stream.isDefault = json.ReadOr("default", false);
    stream.isForced = json.ReadOr("forced", false);
    stream.isCover = type == "cover";
    stream.isAttachment = type == "attachment";
    if (kind != nullptr) stream.type = kind->type;
    if (stream.isCover) stream.type = StreamType::Video;
    if (stream.type == StreamType::Video) {
        ReadVideo(json, stream);
    } else if (stream.type == StreamType::Audio) {
        stream.sampleRate = json.Read<int64_t>("sampleRate");
        stream.layout = json.Read<std::string>("layout");
        stream.sampleFormat = json.Read<std::string>("sampleFormat");
        stream.bitDepth = json.ReadOr("bitDepth", int64_t{0});
    }
    return stream;
}

MediaInfo ReadMedia(const JsonReader& json) {
    MediaInfo media{.path = json.Read<std::string>("path"),
                    .demuxer = json.Read<std::string>("demuxer"),
                    .duration = json.ReadOptional<double>("duration"),
                    .chapters = json.Read<int>("chapters"),
                    .streams = {}};
    if (!FFWrapper::DemuxerExists(media.demuxer) || FFWrapper::OpensOtherFiles(media.demuxer)) {
        ThrowInvalid("an input read as " + Printable(media.demuxer) + " is not for a plan that comes from elsewhere");
    }
    if (json.Has("sequence")) {
        const JsonReader sequence = json.Object("sequence");
        media.sequence = {.fps = sequence.ReadRatio("fps"),
                          .first = sequence.Read<int64_t>("first"),
                          .count = sequence.Read<int64_t>("count")};
        const auto& [fps, first, count] = *media.sequence;
        if (!(fps > Property::Ratio(0)) || !IsFrameRate(fps) || first < 0 || count < 1) {
            ThrowInvalid("its input is no sequence of pictures");
        }
    }
    json.ForEach("streams", [&](const JsonReader& stream) { media.streams.push_back(ReadStream(stream)); });
    return media;
}

/// Gives settings the types that the known ones have; what is not among those stays as it is.
void TakeTypes(Property& settings, const Property& known, const std::string& path) {
    Property both = settings;
    for (const Property& child : settings) {
        if (!known.ChildExists(child.Name())) both.RemoveChild(child.Name());
    }
    CheckSettings(both, known, path);
    Override(settings, both);
}

Pixels ReadPixels(const JsonReader& json) {
    return {.format = json.ReadOptional<std::string>("format").value_or(std::string()),
            .bitDepth = json.Read<int64_t>("bitDepth"),
            .isToneMapped = json.Read<bool>("toneMapped"),
            .isDeinterlaced = json.Read<bool>("deinterlaced"),
            .isInterlaced = json.Read<bool>("interlaced")};
}

PlannedStream ReadPlanned(const JsonReader& json, const MediaInfo& input) {
    const auto type = json.Read<std::string>("type");
    const StreamRecord* kind = StreamRecord::Find(type);
    if (kind == nullptr) ThrowInvalid("\"" + Printable(type) + "\" is no type of stream");
    const int index = json.Read<int>("inputStream");
    const auto source = std::ranges::find(input.streams, index, &MediaStream::index);
    if (source == input.streams.end() || source->type != kind->type || !IsUsable(*source)) {
        ThrowInvalid("the input has no " + kind->typeId + " stream " + std::to_string(index));
    }
    PlannedStream stream{.kind = kind,
                         .source = *source,
                         .path = json.Read<std::string>("path"),
                         .codecId = json.Read<std::string>("codec"),
                         .isCopied = json.Read<bool>("copied"),
                         .encoder = json.ReadOptional<std::string>("encoder").value_or(std::string()),
                         .globalHeader = json.Read<bool>("globalHeader"),
                         .isSupported = json.Read<bool>("supported")};
    if (json.Has("pixels")) stream.pixels = ReadPixels(json.Object("pixels"));
    return stream;
}

/// What a codec node has of its source, beyond what presets may hold; the values stand for the types.
Property OfSource(StreamType type) {
    Property node;
    if (type == StreamType::Audio) {
        node.SetChild(IFormatCodecAudio::TAG_SAMPLE_RATE, 0);
        node.SetChild(IFormatCodecAudio::TAG_LAYOUT, std::string());
        node.SetChild(IFormatCodecAudio::TAG_SAMPLE_FORMAT, std::string());
        return node;
    }
    for (const std::string* tag : {&IFormatCodecVideo::TAG_WIDTH, &IFormatCodecVideo::TAG_HEIGHT,
                                   &IFormatCodecVideo::TAG_ASPECTX, &IFormatCodecVideo::TAG_ASPECTY}) {
        node.SetChild(*tag, 0);
    }
    return node;
}

/// Sizes whose products do not overflow.
void CheckPicture(const PlannedStream& stream, const Property& codec) {
    constexpr int64_t kMost = 1 << 16;
    const auto check = [](int64_t value) {
        if (value < 1 || value > kMost) ThrowInvalid(std::to_string(value) + " is no size of a picture");
    };
    for (const auto value : {stream.source.width, stream.source.height}) check(value);
    for (const Property& child : OfSource(StreamType::Video)) {
        if (!codec.ChildExists(child.Name())) ThrowInvalid(child.Name() + " is missing");
        check(codec[child.Name()].GetInt64());
    }
    if (!IsFrameRate(stream.source.fps) || !IsFrameRate(codec[IFormatCodecVideo::TAG_FPS].GetRatio())) {
        ThrowInvalid("frame rates are " + FrameRateRange());
    }
    const auto shape = boost::rational_cast<double>(stream.source.sampleAspectRatio);
    if (shape <= 0.0 || shape > kMost || shape < 1.0 / kMost) ThrowInvalid("a sample aspect ratio is out of range");
}

/// What may stand in the settings of a stream; the values stand for the types.
Property KnownOf(const PlannedStream& stream) {
    if (stream.isCopied || !stream.kind->HasHelpers()) return CopiedNode(*stream.kind, stream.source, stream.codecId);
    Property known = KnownStreamSettings(*stream.kind, *FindHelper(CodecsOf(stream.kind->type), stream.codecId));
    Complete(known[stream.kind->codecKey], OfSource(stream.kind->type));
    return known;
}

/// The codec settings of a plan hold what the stream has in the end, beyond what presets may hold.
void ReadTypes(Plan& plan) {
    const HelperPtr format = FindHelper(kFormats, plan.container);
    if (!plan.settings.ChildExists(IPreset::KEY_FORMAT) || !plan.settings.ChildExists(IPreset::KEY_STREAMS) ||
        plan.settings[IPreset::KEY_STREAMS].Count() != plan.streams.size()) {
        ThrowInvalid("its settings are not those of its streams");
    }
    TakeTypes(plan.settings[IPreset::KEY_FORMAT], KnownFormatSettings(*format), IPreset::KEY_FORMAT);
    for (std::size_t i = 0; i < plan.streams.size(); ++i) {
        const PlannedStream& stream = plan.streams[i];
        Property& settings = plan.settings[IPreset::KEY_STREAMS][std::to_string(i)];
        const Property known = KnownOf(stream);
        if (!settings.ChildExists(stream.kind->codecKey)) ThrowInvalid(stream.path + " has no codec");
        for (const Property& child : settings) {
            if (!known.ChildExists(child.Name())) ThrowInvalid("there is no " + Printable(child.Name()));
        }
        for (const Property& node : known) {
            if (!settings.ChildExists(node.Name()) || !IsNode(node)) continue;
            TakeTypes(settings[node.Name()], node, stream.path);
        }
        if (stream.kind->type == StreamType::Video && !stream.isCopied)
            CheckPicture(stream, settings[stream.kind->codecKey]);
    }
}

}  // namespace

Plan PlanFromJson(const std::string& text) {
    // Building an object takes quadratic time, and taking apart a deep one exhausts the stack.
    std::size_t values = 0;
    const auto limit = [&values](int depth, Json::parse_event_t, const Json&) {
        constexpr std::size_t kMost = 1 << 13;
        if (depth > static_cast<int>(kMaxJsonDepth) || ++values > kMost) ThrowInvalid("it is too large");
        return true;
    };
    Json json;
    try {
        json = Json::parse(text, limit);
    } catch (const Json::exception&) {
        throw NotAcceptable({.code = ProblemCode::InvalidJson, .message = "It is no plan: it is no JSON text."});
    }
    const JsonReader reader(json, "plan");
    Plan plan;
    plan.input = ReadMedia(reader.Object("input"));
    plan.container = reader.Read<std::string>("container");
    plan.globalHeader = reader.Read<bool>("globalHeader");
    plan.settings = reader.ReadTree("settings");
    plan.notes = reader.Read<std::vector<std::string>>("notes");
    plan.sizeLimit = reader.ReadOptional<int64_t>("sizeLimit");
    reader.ForEach("streams",
                   [&](const JsonReader& stream) { plan.streams.push_back(ReadPlanned(stream, plan.input)); });
    if (plan.streams.empty()) ThrowInvalid("it has no streams");
    plan.attachments = reader.Read<std::vector<int>>("attachments");
    reader.ForEach("choices", [&](const JsonReader& choice) {
        plan.choices.push_back(
            {choice.Read<std::string>("path"), choice.Read<std::string>("value"), choice.Read<std::string>("reason")});
    });
    reader.ForEach("corrections", [&](const JsonReader& correction) {
        plan.corrections.push_back({correction.Read<std::string>("path"), correction.ReadValue("before"),
                                    correction.ReadValue("after"), correction.Read<std::string>("reason")});
    });
    ReadTypes(plan);
    if (TextAt(plan.FormatSettings(), Conf::IFormatFile::TAG_CONTAINER) != plan.container) {
        ThrowInvalid("its settings are for another container");
    }
    plan.muxer = FFWrapper::MuxerName(plan.FormatSettings());
    return plan;
}

}  // namespace Kestro::Planner
