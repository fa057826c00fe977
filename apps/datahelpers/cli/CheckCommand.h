#pragma once

#include "cli/Arguments.h"
#include "cli/PlanCommands.h"

namespace App {

/// Everything that is wrong with a preset, at once: what it holds, and what becomes of it for the input, or else for a
/// film that stands for one. NotAcceptable is the status when there is something.
Outcome CheckPreset(const Arguments& arguments);

/// The plan's corrections as problems, for who wants none.
std::vector<Planner::Problem> CorrectionsAsProblems(const Planner::Plan& plan);

}  // namespace App
