#include "cli/PlanCommands.h"

#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Kestro/Planner/Execution.h"
#include "Kestro/Planner/FfmpegCommands.h"
#include "Kestro/Planner/FileNames.h"
#include "Kestro/Planner/Json.h"
#include "Kestro/Planner/MakePlan.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Probe.h"
#include "Kestro/Planner/Text.h"

#include "cli/CheckCommand.h"
#include "cli/PresetFile.h"
#include "convert/Converter.h"
#include "convert/OutputFile.h"
#include "convert/TemporaryFile.h"
#include "report/Report.h"
#include "report/Text.h"

namespace App {
namespace {

/// Whether a plan that was made for the one can be carried out on the other.
bool IsAlike(const Planner::MediaInfo& one, const Planner::MediaInfo& other) {
    const auto isAlike = [](const Planner::MediaStream& a, const Planner::MediaStream& b) {
        return a.type == b.type && a.codec == b.codec && a.isCover == b.isCover && a.width == b.width &&
               a.height == b.height && a.sampleRate == b.sampleRate && a.layout == b.layout;
    };
    return one.demuxer == other.demuxer && std::ranges::equal(one.streams, other.streams, isAlike);
}

/// The input: a file, or standard input kept in a temporary one while this lives.
class Source {
public:
    Planner::MediaInfo Probe(const PlanOptions& options) {
        Planner::ProbeOptions how{.followReferences = options.followReferences, .picturesPerSecond = options.fps};
        if (options.input != kStandardStream) return Planner::Probe(options.input, how);
        spool_.emplace(TemporaryFile::OfStandardInput());
        how.name = "standard input";
        return Planner::Probe(spool_->Path(), how);
    }
    /// Of the temporary file; empty where there is none.
    std::string Path() const { return spool_ ? spool_->Path() : std::string(); }

private:
    std::optional<TemporaryFile> spool_;
};

/// A plan that was made before, perhaps elsewhere, for this input or one like it. Fills in what it says of the input.
Planner::Plan ReadPlan(PlanOptions& options, Source& source) {
    const std::string text = ReadText(options.planFile, "plan");
    Planner::Plan plan = Planner::PlanFromJson(text);
    const Json frame = Json::parse(text);
    if (const Json excerpt = frame.value("excerpt", Json()); excerpt.is_object()) {
        const auto seconds = [&excerpt](const char* name) {
            const Json value = excerpt.value(name, Json());
            return value.is_number() ? std::optional(std::clamp(value.get<double>(), 0.0, 1e7)) : std::nullopt;
        };
        if (options.excerpt.start == 0.0) options.excerpt.start = seconds("start").value_or(0.0);
        if (!options.excerpt.duration) options.excerpt.duration = seconds("duration");
    }
    if (options.input.empty()) options.input = plan.input.path;
    if (plan.input.sequence) options.fps = plan.input.sequence->fps;
    const Planner::MediaInfo input = source.Probe(options);
    if (!IsAlike(input, plan.input)) {
        throw Planner::NotAcceptable(
            {.code = Planner::ProblemCode::InvalidPlan,
             .message = Planner::Printable(options.input) + " is not what the plan was made for."});
    }
    plan.input = input;
    return plan;
}

/// A preset is looked at before the input. opened: what was read beside it.
Planner::Plan MakePlan(PlanOptions& options, Source& source, OpenedFiles& opened) {
    if (!options.planFile.empty()) return ReadPlan(options, source);
    const Planner::Preset preset = ReadPreset(options);
    std::vector<Planner::Problem> problems = Planner::Check(preset);
    if (!problems.empty()) throw Planner::NotAcceptable(std::move(problems));
    Planner::MediaInfo input;
    const auto probe = [&] { input = source.Probe(options); };
    if (options.followReferences) {
        opened = OpenedFiles::While(probe);
    } else {
        probe();
    }
    if (input.duration && options.excerpt.Of(input.duration) <= 0.0) {
        throw Failure(ExitStatus::WrongUsage,
                      "Nothing of the input is asked for: it ends at " + ClockTime(*input.duration) + ".");
    }
    // A size is for the piece that is taken.
    const std::optional<double> whole = std::exchange(input.duration, options.excerpt.Of(input.duration));
    Planner::Plan plan = Planner::MakePlan(input, preset);
    plan.input.duration = whole;
    return plan;
}

/// The report's list of what was read beside the input, where that was asked for.
void AddOpened(Json& json, const PlanOptions& options, const OpenedFiles& opened) {
    if (options.followReferences) json["references"] = opened.Beside(options.input);
}

/// A name that promises another container than it gets.
void NoteOtherName(Planner::Plan& plan, const std::string& output) {
    std::string note = Planner::NoteOnFileName(plan, output);
    if (!note.empty()) plan.notes.push_back(std::move(note));
}

/// The command lines that convert would run, for a person's shell.
Outcome TellCommands(const Planner::Plan& plan, const Arguments& arguments) {
    const Planner::CommandOptions options{.workFolder = ".", .excerpt = arguments.plan.excerpt, .isWatched = false};
    Json lines = Json::array();
    for (const Planner::Command& command : Planner::FfmpegCommands(plan, arguments.output, options)) {
        const std::string line = "ffmpeg " + ShellLine(command);
        if (!arguments.json) std::cout << line << "\n";
        lines.push_back(line);
    }
    Json json = App::ToJson(plan);
    json["commands"] = lines;
    return {json};
}

}  // namespace

Outcome PlanOnly(const Arguments& arguments) {
    OpenedFiles opened;
    PlanOptions asked = arguments.plan;
    Source source;
    Planner::Plan plan = MakePlan(asked, source, opened);
    if (arguments.isStrict && !plan.corrections.empty()) {
        throw Planner::NotAcceptable(CorrectionsAsProblems(plan));
    }
    NoteOtherName(plan, arguments.output);
    if (arguments.showsCommands) return TellCommands(plan, arguments);
    if (!arguments.json) {
        Print(std::cout, plan, TerminalWidth(STDOUT_FILENO), arguments.isFull);
        PrintOpened(std::cout, opened.Beside(arguments.plan.input));
    }
    Json json = App::ToJson(plan);
    AddOpened(json, arguments.plan, opened);
    if (const Planner::Excerpt& excerpt = asked.excerpt; excerpt.start > 0.0 || excerpt.duration) {
        json["excerpt"] = {{"start", excerpt.start}, {"duration", excerpt.duration ? Json(*excerpt.duration) : Json()}};
    }
    return {json};
}

Outcome PlanAndConvert(const Arguments& arguments) {
    const bool isPiped = arguments.output == kStandardStream;
    std::ostream& out = isPiped ? std::cerr : std::cout;
    const std::size_t width = TerminalWidth(isPiped ? STDERR_FILENO : STDOUT_FILENO);
    PlanOptions asked = arguments.plan;
    const auto checkOutput = [&] {
        if (isPiped) return CheckStandardOutput();
        if (arguments.isSequence) return;
        OutputFile::Check(arguments.output, arguments.overwrite, asked.input, {asked.presetFile, asked.planFile});
    };
    checkOutput();
    CheckConverter();
    OpenedFiles opened;
    Source source;
    Planner::Plan plan = MakePlan(asked, source, opened);
    if (arguments.plan.input.empty()) checkOutput();  // now that its name is known
    NoteOtherName(plan, arguments.output);
    Planner::CheckInstalled(plan);
    const bool talks = !arguments.json && !arguments.isQuiet;
    if (talks) {
        PrintChanges(out, plan, width);
        out.flush();
    }
    const bool onTerminal = isatty(STDERR_FILENO) != 0;
    const auto lines = !talks ? Progress::Style::None : Progress::Style::Lines;
    ConvertOptions options{.overwrite = arguments.overwrite, .excerpt = asked.excerpt, .input = source.Path()};
    options.style = onTerminal && !arguments.isQuiet ? Progress::Style::Bar : lines;
    if (arguments.tellsParts) options.style = Progress::Style::Parts;
    const Conversion conversion = isPiped                ? ConvertToStandardOutput(plan, options)
                                  : arguments.isSequence ? ConvertToSequence(plan, arguments.output, options)
                                                         : Convert(plan, arguments.output, options);
    opened.Add(conversion.opened);
    if (arguments.isQuiet && !arguments.json) PrintFaults(std::cerr, conversion, width);
    if (talks) {
        Print(out, conversion, width);
        PrintOpened(out, opened.Beside(arguments.plan.input));
    }
    Json json = App::ToJson(plan);
    AddOpened(json, arguments.plan, opened);
    json["output"] = ToJson(conversion);
    return {json, conversion.shortfall.empty() ? ExitStatus::Done : ExitStatus::ConversionFailed};
}

}  // namespace App
