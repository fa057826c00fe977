#pragma once

#include "Kestro/Planner/Preset.h"

#include "cli/Arguments.h"

namespace App {

/// The preset that the command line asks for. Throws Failure (WrongUsage) for a file that cannot be read and for a
/// change that is none; what is wrong in the preset itself is told by Planner::Check.
Planner::Preset ReadPreset(const PlanOptions& options);

}  // namespace App
