#pragma once

#include "cli/Arguments.h"
#include "cli/PlanCommands.h"

namespace App {

/// `catalogue`: a folder of pages that show what the library knows. Throws Failure.
Outcome WriteCatalogue(const Arguments& arguments);

}  // namespace App
