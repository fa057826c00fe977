#pragma once

#include "cli/PlanCommands.h"
#include "prove/ProveOptions.h"

namespace App {

/// `prove`. Its status is ConversionFailed where something contradicts what the library offers, or, held against other
/// proofs, is no longer proven. Throws Failure.
Outcome ProveOffers(const ProveOptions& options, bool asJson);

}  // namespace App
