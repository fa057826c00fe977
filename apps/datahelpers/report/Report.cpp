#include "report/Report.h"

#include <cstdio>
#include <ostream>

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/Planner/Domain.h"
#include "Kestro/Planner/Json.h"
#include "Kestro/Planner/Text.h"

#include "report/SettingsText.h"
#include "report/Text.h"

namespace App {
namespace {

using Kestro::Conf::IFormatCodec;
using Kestro::Conf::IFormatCodecAudio;
using Kestro::Conf::IFormatCodecVideo;
using Kestro::Conf::StreamType;
using Kestro::Core::Property;
using Kestro::Core::PropertyValueToString;
using Planner::Choice;
using Planner::Correction;
using Planner::MediaInfo;
using Planner::MediaStream;
using Planner::Plan;
using Planner::PlannedStream;
using Planner::Printable;
using Planner::RatioText;

std::string FpsText(const boost::rational<int64_t>& fps) {
    return fps.denominator() == 1 ? std::to_string(fps.numerator()) : RatioText(fps);
}

std::string ValueText(const std::optional<Property>& value) {
    return value ? Printable(PropertyValueToString(*value)) : "(none)";
}

void PrintIndented(std::ostream& out, const std::string& text, std::size_t indent, std::size_t width) {
    out << std::string(indent, ' ') << Wrapped(Printable(text), indent, indent, width) << "\n";
}

/// What the stream will have: "1280 x 720, 25 frames/s, 2000 kbit/s, ".
std::string SettledText(const Plan& plan, std::size_t stream) {
    const Property& codec = plan.CodecSettings(stream);
    const auto text = [&codec](const std::string& tag) {
        const Property* value = codec.FindByPath(tag);
        return value != nullptr ? PropertyValueToString(*value) : std::string();
    };
    std::string settled;
    if (plan.streams[stream].kind->type == StreamType::Video) {
        settled = text(IFormatCodecVideo::TAG_WIDTH) + " x " + text(IFormatCodecVideo::TAG_HEIGHT) + ", ";
        const Property* fps = codec.FindByPath(IFormatCodecVideo::TAG_FPS);
        if (fps != nullptr) settled += FpsText(fps->GetRatio()) + " frames/s, ";
    } else if (plan.streams[stream].kind->type == StreamType::Audio) {
        settled = text(IFormatCodecAudio::TAG_SAMPLE_RATE) + " Hz, " + text(IFormatCodecAudio::TAG_LAYOUT) + ", ";
    }
    const bool hasQuality = codec.ChildExists(IFormatCodec::TAG_QUALITY);
    if (hasQuality && text(IFormatCodec::TAG_BITRATE_MODE) == IFormatCodec::TAG_BITRATE_MODE_VBR) {
        return settled + "quality " + text(IFormatCodec::TAG_QUALITY) + " of " +
               std::to_string(IFormatCodec::MAX_QUALITY) + ", ";
    }
    const Property* rate = codec.FindByPath(IFormatCodec::TAG_BITRATE);
    return rate != nullptr ? settled + std::to_string(rate->GetInt64() / 1000) + " kbit/s, " : settled;
}

}  // namespace

Complaint Told(const Planner::Problem& problem) {
    Complaint complaint{.message = problem.message,
                        .path = problem.path,
                        .value = problem.value,
                        .allowed = problem.allowed,
                        .wayOut = problem.wayOut};
    if (problem.code == Planner::ProblemCode::OpensOtherFiles) complaint.wayOut = "--follow-references";
    for (const Planner::Change& change : problem.changes) {
        complaint.wayOut += (complaint.wayOut.empty() ? "--set " : " --set ") + change.path + "=" + change.value;
    }
    return complaint;
}

Json ToJson(const Plan& plan) { return Json::parse(Planner::ToJson(plan)); }

Json ToJson(const Conversion& conversion) {
    return {{"size", conversion.size},
            {"files", conversion.files},
            {"written", Json::parse(Planner::ToJson(conversion.written))},
            {"differences", conversion.differences},
            {"shortfall", conversion.shortfall.empty() ? Json() : Json(conversion.shortfall)},
            {"messages", conversion.messages}};
}

Json ToJson(const Complaint& complaint) {
    Json json{{"message", complaint.message}};
    if (!complaint.path.empty()) json["path"] = complaint.path;
    if (!complaint.value.empty()) json["value"] = complaint.value;
    if (!complaint.allowed.empty()) json["allowed"] = complaint.allowed;
    if (!complaint.wayOut.empty()) json["wayOut"] = complaint.wayOut;
    return json;
}

void Print(std::ostream& out, const MediaInfo& media) {
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
            if (stream.isInterlaced) out << ", interlaced";
            if (stream.bitDepth > 8) out << ", " << stream.bitDepth << " bits";
            if (stream.colour.IsHdr()) out << ", " << Printable(stream.colour.transfer);
        } else if (stream.type == StreamType::Audio) {
            out << ", " << stream.sampleRate << " Hz, " << stream.layout << ", " << stream.sampleFormat;
        }
        if (!stream.language.empty() && stream.language != "und") out << ", " << Printable(stream.language);
        if (!stream.title.empty()) out << ", \"" << Printable(stream.title) << "\"";
        if (stream.isForced) out << ", forced";
        out << "\n";
    }
    if (media.chapters > 0) out << "  " << media.chapters << " chapters\n";
}

void Print(std::ostream& out, const Plan& plan, std::size_t width, bool isFull) {
    out << "Input\n  ";
    Print(out, plan.input);
    out << "\nOutput\n  " << plan.container << ", FFmpeg's muxer " << plan.muxer
        << (plan.globalHeader ? ", global header" : ", no global header") << "\n";
    for (std::size_t i = 0; i < plan.streams.size(); ++i) {
        const PlannedStream& stream = plan.streams[i];
        out << "  " << (stream.isCopied ? TypeName(stream.source) : stream.kind->typeId) << " " << stream.codecId
            << " from stream " << stream.source.index << ", ";
        out << SettledText(plan, i);
        if (stream.isCopied) {
            out << "copied";
        } else {
            out << (stream.encoder.empty() ? "no encoder in the installed FFmpeg" : "encoder " + stream.encoder);
        }
        if (stream.globalHeader) out << ", global header";
        if (!stream.isSupported) out << ", NOT supported by the muxer";
        out << "\n";
    }
    for (const int attachment : plan.attachments) out << "  attached file from stream " << attachment << "\n";
    out << "\n";
    PrintChanges(out, plan, width);
    if (plan.corrections.empty()) out << "No corrections\n";
    if (!isFull) return;
    out << "\nSettings\n";
    PrintTree(out, plan.settings, 2);
}

void PrintChanges(std::ostream& out, const Plan& plan, std::size_t width) {
    if (!plan.notes.empty()) {
        out << "Notes\n";
        for (const std::string& note : plan.notes) PrintIndented(out, note, 2, width);
    }
    if (!plan.choices.empty()) {
        out << "Chosen\n";
        for (const Choice& choice : plan.choices) {
            PrintIndented(out, choice.path + " = " + Printable(choice.value), 2, width);
            PrintIndented(out, choice.reason, 6, width);
        }
    }
    if (!plan.corrections.empty()) out << "Corrections\n";
    for (const Correction& correction : plan.corrections) {
        PrintIndented(out, correction.path + ": " + ValueText(correction.before) + " -> " + ValueText(correction.after),
                      2, width);
        PrintIndented(out, correction.reason, 6, width);
    }
}

void Print(std::ostream& out, const Conversion& conversion, std::size_t width) {
    out << "Wrote ";
    if (conversion.files > 1) out << conversion.files << " pictures, ";
    out << SizeText(conversion.size) << "\n  ";
    Print(out, conversion.written);
    PrintFaults(out, conversion, width);
}

void PrintFaults(std::ostream& out, const Conversion& conversion, std::size_t width) {
    if (!conversion.shortfall.empty()) {
        PrintIndented(out, "The input gave " + conversion.shortfall + "; it is damaged, and this is what could be had.",
                      2, width);
    }
    for (const std::string& difference : conversion.differences) PrintIndented(out, difference, 2, width);
    if (conversion.messages.empty()) return;
    out << "ffmpeg had complaints on the way:\n";
    for (const std::string& message : conversion.messages) out << "  " << message << "\n";
}

void PrintOpened(std::ostream& out, const std::vector<std::string>& names) {
    if (names.empty()) return;
    out << "Also read\n";
    for (const std::string& name : names) out << "  " << Printable(name) << "\n";
}

void Print(std::ostream& out, const Complaint& complaint, std::size_t width) {
    // ffmpeg's own lines are kept as they are.
    const std::size_t end = complaint.message.find('\n');
    const std::string prefix = "datahelpers: ";
    out << prefix << Wrapped(Printable(complaint.message.substr(0, end)), prefix.size(), 2, width);
    if (end != std::string::npos) out << complaint.message.substr(end);
    out << "\n";
    const auto part = [&](const std::string& title, const std::string& text) {
        out << "  " << title << ": " << Wrapped(Printable(text), title.size() + 4, 6, width) << "\n";
    };
    if (!complaint.path.empty() && complaint.message.find(complaint.path) == std::string::npos) {
        part("setting", Printable(complaint.path + (complaint.value.empty() ? "" : " = " + complaint.value)));
    }
    if (!complaint.allowed.empty()) part("accepted", Planner::ListInWords(complaint.allowed));
    if (!complaint.wayOut.empty()) part("way out", complaint.wayOut);
}

}  // namespace App
