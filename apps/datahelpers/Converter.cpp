#include "Converter.h"

#include <sys/stat.h>

#include <cstring>
#include <deque>
#include <optional>

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/LayoutRecord.h"
#include "Kestro/Core/PropertyValueToString.h"

#include "ChildProcess.h"
#include "Failure.h"
#include "FfmpegArguments.h"
#include "Muxer.h"
#include "OutputFile.h"
#include "Text.h"

namespace App {
namespace {

using Kestro::Conf::IFormatCodecAudio;
using Kestro::Conf::IFormatCodecVideo;
using Kestro::Conf::StreamType;
using Kestro::Core::Property;

constexpr const char* kProgram = "ffmpeg";
// Enough to see what went wrong; the last lines tell most.
constexpr std::size_t kKeptMessages = 10;

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
    return text;
}

/// What ffmpeg says, and whether it complains of the file that it writes.
struct Messages {
    std::deque<std::string> lines;
    bool outputFailed = false;
};

[[noreturn]] void ThrowFfmpegFailed(const Messages& messages, const ChildEnd& end) {
    std::string reason = end.exited ? "it ended with status " + std::to_string(end.status)
                                    : std::string("it was ended by a signal: ") + strsignal(end.status);
    if (messages.outputFailed) reason = "the output could not be written";
    std::string text = "The conversion failed; nothing was written. " + std::string(kProgram) + ": " + reason + ".";
    for (const std::string& line : messages.lines) text += "\n  " + line;
    throw Failure(ExitStatus::ConversionFailed, std::move(text));
}

void Compare(const std::string& what, const std::string& planned, const std::string& found, Conversion& conversion) {
    if (!found.empty() && planned != found) {
        conversion.differences.push_back(what + " is " + found + ", not " + planned + " as planned.");
    }
}

std::string Planned(const Property& codec, const std::string& tag) { return PropertyValueToString(codec[tag]); }

int Channels(const std::string& layout) {
    const auto* record = Kestro::Conf::LayoutRecord::Find(layout);
    return record != nullptr ? record->channels : 0;
}

std::string Known(int64_t value) { return value > 0 ? std::to_string(value) : std::string(); }

/// Reads what was written: a conversion that left something else than a file with these streams has failed.
void Verify(const Plan& plan, const std::string& path, Conversion& conversion) {
    const bool isPicture = IsImageMuxer(MuxerName(plan.FormatSettings()));
    try {
        conversion.written = Probe(path, isPicture ? plan.streams.front().codecId : std::string());
    } catch (const Failure&) {
        throw Failure(ExitStatus::ConversionFailed, "The conversion failed: what ffmpeg wrote cannot be read.");
    }
    std::vector<MediaStream>& written = conversion.written.streams;
    // What a muxer adds of its own, such as the navigation data of a DVD.
    std::erase_if(written, [](const MediaStream& stream) { return !stream.type; });
    if (written.size() != plan.streams.size()) {
        throw Failure(ExitStatus::ConversionFailed, "The conversion failed: ffmpeg wrote " +
                                                        std::to_string(written.size()) + " streams instead of " +
                                                        std::to_string(plan.streams.size()) + ".");
    }
    // Some muxers write the sound first.
    std::vector<bool> taken(written.size(), false);
    for (std::size_t i = 0; i < plan.streams.size(); ++i) {
        const Property& codec = plan.CodecSettings(i);
        std::size_t found = 0;
        while (found < written.size() && (taken[found] || written[found].type != plan.streams[i].kind->type)) ++found;
        if (found == written.size()) {
            throw Failure(ExitStatus::ConversionFailed, std::string("The conversion failed: ffmpeg wrote no ") +
                                                            plan.streams[i].kind->typeId + " stream for " +
                                                            plan.streams[i].path + ".");
        }
        taken[found] = true;
        const MediaStream& stream = written[found];
        const std::string name = "Stream " + std::to_string(i) + ": ";
        Compare(name + "the codec", plan.streams[i].codecId, stream.codec, conversion);
        if (plan.streams[i].kind->type == StreamType::Video) {
            Compare(name + "the width", Planned(codec, IFormatCodecVideo::TAG_WIDTH), Known(stream.width), conversion);
            Compare(name + "the height", Planned(codec, IFormatCodecVideo::TAG_HEIGHT), Known(stream.height),
                    conversion);
            const bool hasRate = stream.fps > boost::rational<int64_t>(0) && !stream.isCover && !isPicture;
            const std::string fps = PropertyValueToString(Property({}, stream.fps));
            Compare(name + "the frame rate", Planned(codec, IFormatCodecVideo::TAG_FPS), hasRate ? fps : "",
                    conversion);
        } else {
            Compare(name + "the sample rate", Planned(codec, IFormatCodecAudio::TAG_SAMPLE_RATE),
                    Known(stream.sampleRate), conversion);
            const std::string layout = Planned(codec, IFormatCodecAudio::TAG_LAYOUT);
            // AC-3 does not tell speakers behind from those at the side.
            const bool isSame = plan.streams[i].codecId == IFormatCodecAudio::CODEC_ID_AC3 &&
                                Channels(layout) == Channels(stream.layout);
            if (!isSame) Compare(name + "the layout", layout, stream.layout, conversion);
        }
    }
}

/// Runs ffmpeg as often as the plan asks for. temporary: what it writes, for output.
void Run(const Plan& plan, const std::vector<ArgumentList>& runs, const std::string& temporary,
         const std::string& output, SignalGuard& signals, Progress::Style style, Conversion& conversion) {
    const std::string program = FindProgram(kProgram);
    Progress progress(style, plan.input.duration, runs.size());
    for (const ArgumentList& arguments : runs) {
        progress.BeginPass();
        Messages messages;
        const auto onError = [&](std::string_view line) {
            // Some versions end well although the last part of the file could not be written; they say so.
            if (line.find(temporary) != std::string_view::npos) messages.outputFailed = true;
            messages.lines.push_back(Printable(Replaced(std::string(line), FileUrl(temporary), output)));
            if (messages.lines.size() > kKeptMessages) messages.lines.pop_front();
        };
        const ChildEnd end = RunChild(
            program, arguments, signals, [&progress](std::string_view line) { progress.Read(line); }, onError);
        if (!end.exited || end.status != 0 || messages.outputFailed) ThrowFfmpegFailed(messages, end);
        conversion.messages.insert(conversion.messages.end(), messages.lines.begin(), messages.lines.end());
    }
}

int64_t SizeOf(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_size : 0;
}

}  // namespace

void CheckConverter(const Plan& plan) {
    if (FindProgram(kProgram).empty()) {
        throw Failure(ExitStatus::ConversionFailed,
                      Problem{.message = "The program ffmpeg is not on the PATH.", .wayOut = "install FFmpeg"});
    }
    const std::string muxer = MuxerName(plan.FormatSettings());
    if (!MuxerExists(muxer)) {
        throw Failure(ExitStatus::NotAcceptable,
                      "The installed FFmpeg cannot write the container " + plan.container + ".");
    }
    for (const PlannedStream& stream : plan.streams) {
        if (stream.encoder.empty()) {
            throw Failure(ExitStatus::NotAcceptable,
                          Problem{.message = "The installed FFmpeg has no encoder for " + stream.codecId + ".",
                                  .path = stream.path,
                                  .value = stream.codecId,
                                  .wayOut = "take another codec"});
        }
    }
}

Conversion Convert(const Plan& plan, const std::string& output, Progress::Style style) {
    SignalGuard signals;
    OutputFile file(output);
    const std::string& temporary = file.TemporaryPath();
    std::optional<TemporaryDirectory> passes;
    if (IsTwoPass(plan)) passes.emplace();

    Conversion conversion;
    const auto runs = FfmpegRuns(plan, temporary, passes ? passes->Path() : std::string());
    Run(plan, runs, temporary, output, signals, style, conversion);
    Verify(plan, temporary, conversion);
    conversion.size = SizeOf(temporary);
    StopIfAsked(signals);
    file.Commit();
    conversion.output = output;
    conversion.written.path = output;
    return conversion;
}

Conversion ConvertToSequence(const Plan& plan, const std::string& folder, Progress::Style style) {
    if (!IsImageMuxer(MuxerName(plan.FormatSettings()))) {
        throw Failure(ExitStatus::NotAcceptable, Problem{.message = "A sequence is of pictures; the container " +
                                                                    plan.container + " holds all of them itself.",
                                                         .wayOut = "leave out --sequence"});
    }
    SignalGuard signals;
    OutputFolder output(folder);
    Conversion conversion;
    Run(plan, FfmpegRuns(plan, output.TemporaryPath(), {}, true), output.TemporaryPath(), folder, signals, style,
        conversion);
    Verify(plan, output.TemporaryPath() + "/" + PictureName(plan, 1), conversion);
    conversion.files = 0;
    while (const int64_t size = SizeOf(output.TemporaryPath() + "/" + PictureName(plan, conversion.files + 1))) {
        conversion.size += size;
        ++conversion.files;
    }
    StopIfAsked(signals);
    output.Commit();
    conversion.output = folder;
    conversion.written.path = folder + "/" + PictureName(plan, 1);
    return conversion;
}

}  // namespace App
