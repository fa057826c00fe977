/// datahelpers: tells what containers, encoders and filters accept, plans conversions and carries them out by ffmpeg.

extern "C" {
#include <libavutil/log.h>
}

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <functional>
#include <iostream>

#include "Kestro/Exception.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/PresetSchema.h"

#include "cli/Arguments.h"
#include "cli/Batch.h"
#include "cli/CatalogueCommand.h"
#include "cli/CheckCommand.h"
#include "cli/Failure.h"
#include "cli/PlanCommands.h"
#include "cli/PresetFile.h"
#include "prove/ProveCommand.h"
#include "report/FitReport.h"
#include "report/HelperReport.h"
#include "report/Report.h"
#include "report/Text.h"

namespace {

using namespace App;

/// Results and failures have one frame; see docs/json.md.
void WriteJson(const std::string& command, ExitStatus status, const Json& content) {
    Json frame{{"command", command.empty() ? Json() : Json(command)}, {"status", static_cast<int>(status)}};
    frame.update(content);
    // File names need not be UTF-8; JSON is.
    std::cout << frame.dump(2, ' ', false, Json::error_handler_t::replace) << "\n";
}

Json List(const Arguments& arguments) {
    Json json = Json::object();
    for (const Planner::HelperKind* kind : Planner::HelperKinds()) {
        if (!arguments.listsHelpers || (arguments.kind != nullptr && arguments.kind != kind)) continue;
        const HelperList list = ListHelpers(*kind);
        if (!arguments.json) Print(std::cout, list);
        json[kind->plural] = ToJson(list);
    }
    if (arguments.listsPresets) {
        const std::vector<KnownPreset> presets = ListPresets();
        if (!arguments.json) Print(std::cout, presets);
        json["presets"] = ToJson(presets);
    }
    return json;
}

Json Show(const Arguments& arguments) {
    const HelperSheet sheet =
        ShowHelper(*arguments.kind, Planner::NameMeantBy(*arguments.kind, arguments.name), arguments.isAutomatic);
    if (!arguments.json) Print(std::cout, sheet, TerminalWidth(STDOUT_FILENO));
    return ToJson(sheet);
}

std::string MeantCodec(const std::string& word) {
    return Planner::NameMeantBy(Planner::kAudioCodecs, Planner::NameMeantBy(Planner::kVideoCodecs, word));
}

Json TellFits(const Arguments& arguments) {
    const std::vector<Planner::Fit> fits =
        Planner::FindFits(MeantCodec(arguments.codec), Planner::NameMeantBy(Planner::kFormats, arguments.container));
    if (!arguments.json) Print(std::cout, fits);
    return {{"fits", ToJson(fits)}};
}

Json WriteSchema(const Arguments& arguments) {
    const std::string schema = Planner::PresetSchema(Planner::NameMeantBy(Planner::kFormats, arguments.container));
    if (!arguments.json) std::cout << schema << "\n";
    return {{"schema", Json::parse(schema)}};
}

int Report(const Failure& failure, const std::string& command, bool asJson) {
    Print(std::cerr, failure.Said(), TerminalWidth(STDERR_FILENO));
    if (asJson) WriteJson(command, failure.Status(), {{"error", ToJson(failure.Said())}});
    return static_cast<int>(failure.Status());
}

/// All problems in words, the first as JSON.
int Report(const Planner::NotAcceptable& refused, const Arguments& arguments, bool asJson) {
    const std::vector<Planner::Problem>& problems = refused.Problems();
    const bool isUsage = arguments.command == Command::Show || arguments.command == Command::Fits ||
                         arguments.command == Command::Schema ||
                         problems.front().code == Planner::ProblemCode::UnreadableInput ||
                         problems.front().code == Planner::ProblemCode::OpensOtherFiles;
    const ExitStatus status = isUsage ? ExitStatus::WrongUsage : ExitStatus::NotAcceptable;
    const int code = Report(Failure(status, Told(problems.front())), arguments.commandName, asJson);
    for (std::size_t i = 1; i < problems.size(); ++i) {
        Print(std::cerr, Told(problems[i]), TerminalWidth(STDERR_FILENO));
    }
    return code;
}

/// Does it, and reports what kept it from being done.
int Guarded(const Arguments& arguments, const std::function<int()>& work) {
    const bool asJson = arguments.json;
    try {
        return work();
    } catch (const Failure& failure) {
        return Report(failure, arguments.commandName, asJson);
    } catch (const Planner::NotAcceptable& refused) {
        return Report(refused, arguments, asJson);
    } catch (const Kestro::Exception& exception) {
        // The library's own words, where no step above had better ones.
        return Report(Failure(ExitStatus::NotAcceptable, exception.what()), arguments.commandName, asJson);
    } catch (const std::exception& exception) {
        return Report(Failure(ExitStatus::ConversionFailed, exception.what()), arguments.commandName, asJson);
    }
}

int Finish(const Arguments& arguments);

Outcome Run(const Arguments& arguments) {
    switch (arguments.command) {
        case Command::List:
            return {List(arguments)};
        case Command::Show:
            return {Show(arguments)};
        case Command::Fits:
            return {TellFits(arguments)};
        case Command::Schema:
            return {WriteSchema(arguments)};
        case Command::Check:
            return CheckPreset(arguments);
        case Command::Plan:
            return PlanOnly(arguments);
        case Command::Prove:
            return arguments.prove.pages.empty() ? ProveOffers(arguments.prove, arguments.json)
                                                 : WriteProofPage(arguments.prove, arguments.json);
        case Command::Catalogue:
            return WriteCatalogue(arguments);
        case Command::Convert:
            break;
    }
    if (arguments.into.empty()) return PlanAndConvert(arguments);
    return ConvertMany(arguments, [](const Arguments& one) { return Guarded(one, [&one] { return Finish(one); }); });
}

/// The command, and its report.
int Finish(const Arguments& arguments) {
    const Outcome outcome = Run(arguments);
    if (arguments.json) WriteJson(arguments.commandName, outcome.status, outcome.report);
    std::cout.flush();
    if (!std::cout) throw Failure(ExitStatus::ConversionFailed, "The report could not be written.");
    return static_cast<int>(outcome.status);
}

/// A program may be started with standard streams closed: the next file that it opens would take the number of one, and
/// get what is printed.
void OpenStandardStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) < 0 && open("/dev/null", O_RDWR) < 0) std::_Exit(1);
    }
}

}  // namespace

int main(int count, char** values) {
    OpenStandardStreams();
    av_log_set_level(AV_LOG_QUIET);  // what matters comes back as an error
    Arguments arguments;
    arguments.json = AsksForJson(count, values);
    return Guarded(arguments, [&] { return ParseArguments(count, values, arguments) ? Finish(arguments) : 0; });
}
