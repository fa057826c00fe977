#include "Report.h"

#include <cstdio>
#include <ostream>

#include "Kestro/Core/PropertyValueToString.h"

#include "Domain.h"
#include "Muxer.h"
#include "SettingsText.h"
#include "Text.h"

namespace App {
namespace {

using Kestro::Conf::StreamType;
using Kestro::Core::Property;
using Kestro::Core::PropertyValueToString;

const char* TypeName(const MediaStream& stream) {
    if (stream.isCover) return "cover";
    if (stream.type == StreamType::Video) return "video";
    if (stream.type == StreamType::Audio) return "audio";
    return stream.type == StreamType::Subtitle ? "subtitle" : "data";
}

std::string RatioText(const boost::rational<int64_t>& ratio) { return PropertyValueToString(Property({}, ratio)); }

std::string FpsText(const boost::rational<int64_t>& fps) {
    return fps.denominator() == 1 ? std::to_string(fps.numerator()) : RatioText(fps);
}

std::string ValueText(const std::optional<Property>& value) {
    return value ? Printable(PropertyValueToString(*value)) : "(none)";
}

Json OptionalJson(const std::optional<Property>& value) { return value ? ToJson(*value) : Json(); }

Json StreamJson(const MediaStream& stream) {
    Json json{{"index", stream.index}, {"type", TypeName(stream)}, {"codec", stream.codec}};
    if (stream.type == StreamType::Video) {
        json["width"] = stream.width;
        json["height"] = stream.height;
        json["pixelShape"] = RatioText(stream.sampleAspectRatio);
        json["fps"] = RatioText(stream.fps);
    } else if (stream.type == StreamType::Audio) {
        json["sampleRate"] = stream.sampleRate;
        json["layout"] = stream.layout;
        json["sampleFormat"] = stream.sampleFormat;
    }
    return json;
}

Json MediaJson(const MediaInfo& media) {
    Json json{{"path", media.path}, {"duration", media.duration ? Json(*media.duration) : Json()}};
    Json& streams = json["streams"] = Json::array();
    for (const MediaStream& stream : media.streams) streams.push_back(StreamJson(stream));
    return json;
}

void PrintMedia(std::ostream& out, const MediaInfo& media) {
    out << Printable(media.path);
    if (media.duration) out << "  " << ClockTime(*media.duration);
    out << "\n";
    for (const MediaStream& stream : media.streams) {
        out << "  " << stream.index << " " << TypeName(stream) << " " << stream.codec;
        if (stream.type == StreamType::Video) {
            out << ", " << stream.width << " x " << stream.height;
            if (stream.sampleAspectRatio != boost::rational<int64_t>(1)) {
                out << " pixels of " << RatioText(stream.sampleAspectRatio);
            }
            if (!stream.isCover) out << ", " << FpsText(stream.fps) << " frames/s";
        } else if (stream.type == StreamType::Audio) {
            out << ", " << stream.sampleRate << " Hz, " << stream.layout << ", " << stream.sampleFormat;
        }
        out << "\n";
    }
}

void PrintIndented(std::ostream& out, const std::string& text, std::size_t indent, std::size_t width) {
    out << std::string(indent, ' ') << Wrapped(text, indent, indent, width) << "\n";
}

std::string SizeText(int64_t bytes) {
    char text[32];
    if (bytes >= 1'000'000) {
        std::snprintf(text, sizeof text, "%.1f MB", static_cast<double>(bytes) / 1e6);
    } else {
        std::snprintf(text, sizeof text, "%.1f kB", static_cast<double>(bytes) / 1e3);
    }
    return text;
}

}  // namespace

Json ToJson(const Plan& plan) {
    Json json{{"input", MediaJson(plan.input)}, {"container", plan.container}};
    json["muxer"] = MuxerName(plan.FormatSettings());
    json["globalHeader"] = plan.globalHeader;
    Json& streams = json["streams"] = Json::array();
    for (const PlannedStream& stream : plan.streams) {
        streams.push_back({{"path", stream.path},
                           {"type", stream.kind->typeId},
                           {"inputStream", stream.source.index},
                           {"codec", stream.codecId},
                           {"encoder", stream.encoder.empty() ? Json() : Json(stream.encoder)},
                           {"globalHeader", stream.globalHeader},
                           {"supported", stream.isSupported}});
    }
    json["settings"] = ToJson(plan.settings);
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
    return json;
}

Json ToJson(const Conversion& conversion) {
    return {{"size", conversion.size},
            {"files", conversion.files},
            {"written", MediaJson(conversion.written)},
            {"differences", conversion.differences},
            {"messages", conversion.messages}};
}

Json ToJson(const Problem& problem) {
    Json json{{"message", problem.message}};
    if (!problem.path.empty()) json["path"] = problem.path;
    if (!problem.value.empty()) json["value"] = problem.value;
    if (!problem.allowed.empty()) json["allowed"] = problem.allowed;
    if (!problem.wayOut.empty()) json["wayOut"] = problem.wayOut;
    return json;
}

void Print(std::ostream& out, const Plan& plan, std::size_t width) {
    out << "Input\n  ";
    PrintMedia(out, plan.input);
    out << "\nOutput\n  " << plan.container << ", FFmpeg's muxer " << MuxerName(plan.FormatSettings())
        << (plan.globalHeader ? ", global header" : ", no global header") << "\n";
    for (const PlannedStream& stream : plan.streams) {
        out << "  " << stream.kind->typeId << " " << stream.codecId << " from stream " << stream.source.index << ", ";
        out << (stream.encoder.empty() ? "no encoder in the installed FFmpeg" : "encoder " + stream.encoder);
        if (stream.globalHeader) out << ", global header";
        if (!stream.isSupported) out << ", NOT supported by the muxer";
        out << "\n";
    }
    out << "\nSettings\n";
    PrintTree(out, plan.settings, 2);
    out << "\n";
    PrintChanges(out, plan, width);
}

void PrintChanges(std::ostream& out, const Plan& plan, std::size_t width) {
    if (!plan.choices.empty()) {
        out << "Chosen\n";
        for (const Choice& choice : plan.choices) {
            PrintIndented(out, choice.path + " = " + Printable(choice.value), 2, width);
            PrintIndented(out, choice.reason, 6, width);
        }
    }
    out << (plan.corrections.empty() ? "No corrections\n" : "Corrections\n");
    for (const Correction& correction : plan.corrections) {
        PrintIndented(out, correction.path + ": " + ValueText(correction.before) + " -> " + ValueText(correction.after),
                      2, width);
        PrintIndented(out, correction.reason, 6, width);
    }
    if (!plan.notes.empty()) {
        out << "Notes\n";
        for (const std::string& note : plan.notes) PrintIndented(out, note, 2, width);
    }
}

void Print(std::ostream& out, const Conversion& conversion, std::size_t width) {
    out << "Wrote ";
    if (conversion.files > 1) out << conversion.files << " pictures, ";
    out << SizeText(conversion.size) << "\n  ";
    PrintMedia(out, conversion.written);
    for (const std::string& difference : conversion.differences) PrintIndented(out, difference, 2, width);
    if (conversion.messages.empty()) return;
    out << "ffmpeg had complaints on the way:\n";
    for (const std::string& message : conversion.messages) out << "  " << message << "\n";
}

void Print(std::ostream& out, const Problem& problem, std::size_t width) {
    // Lines of their own stay so: they are the words of others.
    const std::size_t end = problem.message.find('\n');
    const std::string prefix = "datahelpers: ";
    out << prefix << Wrapped(problem.message.substr(0, end), prefix.size(), 2, width);
    if (end != std::string::npos) out << problem.message.substr(end);
    out << "\n";
    const auto part = [&](const std::string& title, const std::string& text) {
        out << "  " << title << ": " << Wrapped(text, title.size() + 4, 6, width) << "\n";
    };
    if (!problem.path.empty() && problem.message.find(problem.path) == std::string::npos) {
        part("setting", Printable(problem.path + (problem.value.empty() ? "" : " = " + problem.value)));
    }
    if (!problem.allowed.empty()) part("accepted", ListInWords(problem.allowed));
    if (!problem.wayOut.empty()) part("way out", problem.wayOut);
}

}  // namespace App
