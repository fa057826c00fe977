#pragma once

#include <functional>

#include "cli/Arguments.h"
#include "cli/PlanCommands.h"

namespace App {

/// `convert --into`: every input becomes a file of the folder, each by a process of its own, so that one that is
/// damaged or hostile harms no other. What is there already and newer than its input is left as it is. perform: a whole
/// command of this program, to its exit status. Throws Failure and Planner::NotAcceptable for what concerns all of
/// them, and for a signal that ends the program.
Outcome ConvertMany(const Arguments& arguments, const std::function<int(const Arguments&)>& perform);

}  // namespace App
