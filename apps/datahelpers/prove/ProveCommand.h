#pragma once

#include "cli/PlanCommands.h"
#include "prove/ProveOptions.h"

namespace App {

/// `prove`. Its status is ConversionFailed where something contradicts what the library offers, or, held against other
/// proofs, is no longer proven. Throws Failure.
Outcome ProveOffers(const ProveOptions& options, bool asJson);

/// `prove --page`: the page goes to standard output. ConversionFailed where a contradiction has no explanation.
Outcome WriteProofPage(const ProveOptions& options, bool asJson);

}  // namespace App
