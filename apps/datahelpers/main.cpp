/// datahelpers: tells what containers, encoders and filters accept, plans conversions and carries them out by ffmpeg.

#include <unistd.h>

#include <exception>
#include <iostream>

#include "Kestro/Exception.h"

#include "Arguments.h"
#include "Catalogue.h"
#include "Converter.h"
#include "Failure.h"
#include "Fits.h"
#include "JsonTree.h"
#include "OutputFile.h"
#include "Planner.h"
#include "Report.h"
#include "Text.h"

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
    for (const HelperKind* kind : HelperKinds()) {
        if (arguments.kind != nullptr && arguments.kind != kind) continue;
        const HelperList list = ListHelpers(*kind);
        if (!arguments.json) Print(std::cout, list);
        json[kind->plural] = ToJson(list);
    }
    return json;
}

Json Show(const Arguments& arguments) {
    const HelperSheet sheet = ShowHelper(*arguments.kind, arguments.name, arguments.isAutomatic);
    if (!arguments.json) Print(std::cout, sheet, TerminalWidth(STDOUT_FILENO));
    return ToJson(sheet);
}

Json TellFits(const Arguments& arguments) {
    const std::vector<Fit> fits = FindFits(arguments.codec, arguments.container);
    if (!arguments.json) Print(std::cout, fits);
    return {{"fits", ToJson(fits)}};
}

Json PlanOnly(const Arguments& arguments) {
    const Plan plan = MakePlan(arguments.plan);
    if (!arguments.json) Print(std::cout, plan, TerminalWidth(STDOUT_FILENO));
    return ToJson(plan);
}

Json PlanAndConvert(const Arguments& arguments) {
    const std::size_t width = TerminalWidth(STDOUT_FILENO);
    if (!arguments.isSequence) OutputFile::Check(arguments.output, arguments.plan.input);
    const Plan plan = MakePlan(arguments.plan);
    CheckConverter(plan);
    if (!arguments.json) {
        PrintChanges(std::cout, plan, width);
        std::cout.flush();
    }
    const bool onTerminal = isatty(STDERR_FILENO) != 0;
    const auto lines = arguments.json ? Progress::Style::None : Progress::Style::Lines;
    const auto style = onTerminal ? Progress::Style::Bar : lines;
    const Conversion conversion = arguments.isSequence ? ConvertToSequence(plan, arguments.output, style)
                                                       : Convert(plan, arguments.output, style);
    if (!arguments.json) Print(std::cout, conversion, width);
    Json json = ToJson(plan);
    json["output"] = ToJson(conversion);
    return json;
}

Json Run(const Arguments& arguments) {
    switch (arguments.command) {
        case Command::List:
            return List(arguments);
        case Command::Show:
            return Show(arguments);
        case Command::Fits:
            return TellFits(arguments);
        case Command::Plan:
            return PlanOnly(arguments);
        case Command::Convert:
            break;
    }
    return PlanAndConvert(arguments);
}

int Report(const Failure& failure, const std::string& command, bool asJson) {
    Print(std::cerr, failure.What(), TerminalWidth(STDERR_FILENO));
    if (asJson) WriteJson(command, failure.Status(), {{"error", ToJson(failure.What())}});
    return static_cast<int>(failure.Status());
}

}  // namespace

int main(int count, char** values) {
    Arguments arguments;
    const bool asJson = AsksForJson(count, values);
    try {
        if (ParseArguments(count, values, arguments)) {
            const Json result = Run(arguments);
            if (asJson) WriteJson(arguments.commandName, ExitStatus::Done, result);
        }
        std::cout.flush();
        if (!std::cout) throw Failure(ExitStatus::ConversionFailed, "The report could not be written.");
        return static_cast<int>(ExitStatus::Done);
    } catch (const Failure& failure) {
        return Report(failure, arguments.commandName, asJson);
    } catch (const Kestro::Exception& exception) {
        // The library's own words, where no step above had better ones.
        return Report(Failure(ExitStatus::NotAcceptable, exception.what()), arguments.commandName, asJson);
    } catch (const std::exception& exception) {
        return Report(Failure(ExitStatus::ConversionFailed, exception.what()), arguments.commandName, asJson);
    }
}
