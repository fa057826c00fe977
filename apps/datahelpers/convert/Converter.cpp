#include "convert/Converter.h"

#include <sys/stat.h>

#include <cstring>
#include <deque>
#include <optional>

#include "Kestro/Planner/Execution.h"
#include "Kestro/Planner/FfmpegCommands.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Probe.h"
#include "Kestro/Planner/Text.h"

#include "cli/Failure.h"
#include "convert/ChildProcess.h"
#include "convert/OutputFile.h"

namespace App {
namespace {

using Planner::Command;
using Planner::FfmpegCommands;
using Planner::FileUrl;
using Planner::PictureName;
using Planner::Plan;
using Planner::Printable;

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

/// Reads what was written: a conversion that left something else than a file with these streams has failed.
void Verify(const Plan& plan, const std::string& path, Conversion& conversion) {
    try {
        conversion.written = Planner::ProbeOutput(plan, path);
    } catch (const Planner::NotAcceptable&) {
        throw Failure(ExitStatus::ConversionFailed, "The conversion failed: what ffmpeg wrote cannot be read.");
    }
    try {
        conversion.differences = Planner::Differences(plan, conversion.written);
    } catch (const Planner::NotAcceptable& refused) {
        throw Failure(ExitStatus::ConversionFailed, std::string("The conversion failed: ") + refused.what());
    }
}

/// Runs ffmpeg as often as the plan asks for. temporary: what it writes, for output.
void Run(const Plan& plan, const std::vector<Command>& runs, const std::string& temporary, const std::string& output,
         SignalGuard& signals, Progress::Style style, Conversion& conversion) {
    const std::string program = FindProgram(kProgram);
    Progress progress(style, plan.input.duration, runs.size());
    for (const Command& arguments : runs) {
        progress.BeginPass();
        Messages messages;
        const auto onError = [&](std::string_view line) {
            // Some versions end well although the last part of the file could not be written; they say so.
            if (line.find(temporary) != std::string_view::npos) messages.outputFailed = true;
            messages.lines.push_back(Printable(Replaced(std::string(line), FileUrl(temporary), output)));
            if (messages.lines.size() > kKeptMessages) messages.lines.pop_front();
        };
        const ChildEnd end = RunChild({.program = program,
                                       .arguments = arguments,
                                       .onOutput = [&progress](std::string_view line) { progress.Read(line); },
                                       .onError = onError,
                                       .onEnd = {}},
                                      signals);
        if (!end.exited || end.status != 0 || messages.outputFailed) ThrowFfmpegFailed(messages, end);
        conversion.messages.insert(conversion.messages.end(), messages.lines.begin(), messages.lines.end());
    }
}

int64_t SizeOf(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_size : 0;
}

}  // namespace

void CheckConverter() {
    if (!FindProgram(kProgram).empty()) return;
    throw Failure(ExitStatus::ConversionFailed,
                  Complaint{.message = "The program ffmpeg is not on the PATH.", .wayOut = "install FFmpeg"});
}

Conversion Convert(const Plan& plan, const std::string& output, Progress::Style style) {
    SignalGuard signals;
    OutputFile file(output);
    const std::string& temporary = file.TemporaryPath();
    std::optional<TemporaryDirectory> passes;
    if (Planner::IsTwoPass(plan)) passes.emplace();

    Conversion conversion;
    const auto runs = FfmpegCommands(plan, temporary, {.passDirectory = passes ? passes->Path() : std::string()});
    Run(plan, runs, temporary, output, signals, style, conversion);
    Verify(plan, temporary, conversion);
    conversion.size = SizeOf(temporary);
    signals.Heed();
    file.Commit();
    conversion.output = output;
    conversion.written.path = output;
    return conversion;
}

Conversion ConvertToSequence(const Plan& plan, const std::string& folder, Progress::Style style) {
    if (!plan.IsPicture()) {
        throw Failure(ExitStatus::NotAcceptable, Complaint{.message = "A sequence is of pictures; the container " +
                                                                      plan.container + " holds all of them itself.",
                                                           .wayOut = "leave out --sequence"});
    }
    SignalGuard signals;
    OutputFolder output(folder);
    Conversion conversion;
    Run(plan, FfmpegCommands(plan, output.TemporaryPath(), {.isSequence = true}), output.TemporaryPath(), folder,
        signals, style, conversion);
    Verify(plan, output.TemporaryPath() + "/" + PictureName(plan, 1), conversion);
    conversion.files = 0;
    while (const int64_t size = SizeOf(output.TemporaryPath() + "/" + PictureName(plan, conversion.files + 1))) {
        conversion.size += size;
        ++conversion.files;
    }
    signals.Heed();
    output.Commit();
    conversion.output = folder;
    conversion.written.path = folder + "/" + PictureName(plan, 1);
    return conversion;
}

}  // namespace App
