#pragma once

#include "Arguments.h"
#include "Plan.h"

namespace App {

/// Looks at the input and settles every setting of its conversion. Throws Failure: WrongUsage for an input or preset
/// that cannot be read, NotAcceptable for settings that the helpers neither accept nor correct.
Plan MakePlan(const PlanOptions& options);

}  // namespace App
