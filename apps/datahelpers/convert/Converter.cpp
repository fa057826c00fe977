#include "convert/Converter.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstring>
#include <optional>

#include "Kestro/Planner/Execution.h"
#include "Kestro/Planner/FfmpegCommands.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Probe.h"
#include "Kestro/Planner/SizeLimit.h"
#include "Kestro/Planner/Text.h"

#include "cli/Failure.h"
#include "convert/ChildProcess.h"
#include "convert/Messages.h"
#include "convert/OutputFile.h"
#include "convert/TemporaryFile.h"

namespace App {
namespace {

using Planner::Command;
using Planner::CommandOptions;
using Planner::FfmpegCommands;
using Planner::PictureName;
using Planner::Plan;

constexpr const char* kProgram = "ffmpeg";
// The first try that misses the size tells how far off; few need a third.
constexpr int kMostTries = 5;

[[noreturn]] void ThrowFfmpegFailed(const Messages& messages, const ChildEnd& end) {
    std::string reason = end.exited ? "it ended with status " + std::to_string(end.status)
                                    : std::string("it was ended by a signal: ") + strsignal(end.status);
    if (messages.OutputFailed()) reason = "the output could not be written";
    std::string text = "The conversion failed; nothing was written. " + std::string(kProgram) + ": " + reason + ".";
    for (const std::string& line : messages.Last()) text += "\n  " + line;
    throw Failure(ExitStatus::ConversionFailed, std::move(text));
}

int64_t SizeOf(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_size : 0;
}

/// Reads what was written: a conversion that left something else than a file with these streams has failed.
void Verify(const Plan& plan, const std::string& path, Conversion& conversion) {
    try {
        conversion.written = Planner::ProbeOutput(plan, path);
    } catch (const Planner::NotAcceptable& refused) {
        // Its words, without the name that the file has until it is complete.
        const std::string said = refused.what();
        const std::size_t reason = said.rfind(": ");
        throw Failure(ExitStatus::ConversionFailed, SizeOf(path) > 0
                                                        ? "The conversion failed: what ffmpeg wrote cannot be read" +
                                                              said.substr(std::min(reason, said.size()))
                                                        : "The conversion failed: ffmpeg wrote nothing.");
    }
    try {
        conversion.differences = Planner::Differences(plan, conversion.written);
    } catch (const Planner::NotAcceptable& refused) {
        throw Failure(ExitStatus::ConversionFailed, std::string("The conversion failed: ") + refused.what());
    }
}

/// Runs ffmpeg as often as the plan asks for. temporary: what it writes, for output.
void Run(const Plan& plan, const std::vector<Command>& runs, const std::string& temporary, const std::string& output,
         SignalGuard& signals, const ConvertOptions& options, Conversion& conversion) {
    const std::string program = FindProgram(kProgram);
    const std::size_t passes = Planner::IsTwoPass(plan) ? 2 : 1;
    Progress progress(options.style, options.excerpt.Of(plan.input.duration), passes);
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const bool isPass = i + passes >= runs.size();
        if (isPass) progress.BeginPass();
        Messages messages(temporary, output);
        const ChildEnd end = RunChild({.program = program,
                                       .arguments = runs[i],
                                       .run = {},
                                       .onOutput =
                                           [&](std::string_view line) {
                                               if (isPass) progress.Read(line);
                                           },
                                       .onError = [&messages](std::string_view line) { messages.Read(line); },
                                       .onEnd = {}},
                                      signals);
        if (!end.exited || end.status != 0 || messages.OutputFailed()) ThrowFfmpegFailed(messages, end);
        conversion.messages.insert(conversion.messages.end(), messages.Errors().begin(), messages.Errors().end());
        conversion.opened.Add(messages.Opened());
    }
}

/// Where the output was held to a size: whether that was met, and by other bitrates than were planned.
void TellSize(const Plan& plan, const Plan& tried, Conversion& conversion) {
    if (!plan.sizeLimit) return;
    if (conversion.size > *plan.sizeLimit) {
        throw Failure(ExitStatus::ConversionFailed,
                      "The conversion failed: the output comes to " + std::to_string(conversion.size) + " bytes, not " +
                          std::to_string(*plan.sizeLimit) + " at most as planned. Nothing was written.");
    }
    const auto others = Planner::OtherBitrates(plan, tried);
    conversion.differences.insert(conversion.differences.end(), others.begin(), others.end());
    if (static_cast<double>(conversion.size) < Planner::kLeastOfSize * static_cast<double>(*plan.sizeLimit)) {
        conversion.differences.emplace_back("The output is smaller than it may be: no bitrate brings it nearer.");
    }
}

/// Converts into the temporary file. output: what it is called in messages. Ends by heeding the signals that came.
Conversion Make(const Plan& plan, const std::string& temporary, const std::string& output, SignalGuard& signals,
                const ConvertOptions& options) {
    std::optional<TemporaryDirectory> work;
    if (Planner::NeedsWorkFolder(plan)) work.emplace();
    const CommandOptions forFfmpeg{
        .workFolder = work ? work->Path() : std::string(), .input = options.input, .excerpt = options.excerpt};
    Conversion conversion;
    Plan tried = plan;
    for (int tries = 1;; ++tries) {
        conversion = {};
        Run(tried, FfmpegCommands(tried, temporary, forFfmpeg), temporary, output, signals, options, conversion);
        Verify(tried, temporary, conversion);
        conversion.size = SizeOf(temporary);
        const auto corrected = Planner::CorrectedForSize(tried, conversion.size);
        if (!corrected || tries == kMostTries) break;
        tried = *corrected;
    }
    conversion.shortfall = Planner::Shortfall(plan, conversion.written, options.excerpt);
    TellSize(plan, tried, conversion);
    signals.Heed();
    conversion.output = output;
    conversion.written.path = output;
    return conversion;
}

}  // namespace

void CheckConverter() {
    if (!FindProgram(kProgram).empty()) return;
    throw Failure(ExitStatus::ConversionFailed,
                  Complaint{.message = "The program ffmpeg is not on the PATH.", .wayOut = "install FFmpeg"});
}

Conversion Convert(const Plan& plan, const std::string& output, const ConvertOptions& options) {
    SignalGuard signals;
    OutputFile file(output, options.overwrite);
    Conversion conversion = Make(plan, file.TemporaryPath(), output, signals, options);
    file.Commit();
    return conversion;
}

Conversion ConvertToStandardOutput(const Plan& plan, const ConvertOptions& options) {
    const TemporaryFile file;
    Conversion conversion;
    {
        SignalGuard signals;
        conversion = Make(plan, file.Path(), "standard output", signals, options);
    }
    file.SendToStandardOutput();
    return conversion;
}

Conversion ConvertToSequence(const Plan& plan, const std::string& folder, const ConvertOptions& options) {
    if (!plan.IsPicture()) {
        throw Failure(ExitStatus::NotAcceptable, Complaint{.message = "A sequence is of pictures; the container " +
                                                                      plan.container + " holds all of them itself.",
                                                           .wayOut = "leave out --sequence"});
    }
    SignalGuard signals;
    OutputFolder output(folder);
    Conversion conversion;
    Run(plan,
        FfmpegCommands(plan, output.TemporaryPath(),
                       {.input = options.input, .isSequence = true, .excerpt = options.excerpt}),
        output.TemporaryPath(), folder, signals, options, conversion);
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
