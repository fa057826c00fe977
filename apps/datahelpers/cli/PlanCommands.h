#pragma once

#include "cli/Arguments.h"
#include "cli/Failure.h"
#include "report/ReportJson.h"

namespace App {

/// What a command that did its work has to report.
struct Outcome {
    Json report;
    ExitStatus status = ExitStatus::Done;  ///< ConversionFailed: a damaged input, of which a part could be had
};

/// `plan`. Throws Failure and Planner::NotAcceptable, as the next.
Outcome PlanOnly(const Arguments& arguments);

/// `convert`.
Outcome PlanAndConvert(const Arguments& arguments);

}  // namespace App
