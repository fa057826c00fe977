#pragma once

#include <CLI/CLI.hpp>

#include "cli/Arguments.h"

namespace App {

/// The options of the commands that make a plan. Throws Failure (WrongUsage) while they are parsed.
void AddPlanOptions(CLI::App& command, PlanOptions& options);

}  // namespace App
