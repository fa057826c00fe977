#pragma once

#include <functional>
#include <vector>

#include "prove/Combination.h"
#include "prove/Proof.h"
#include "prove/ProveOptions.h"

namespace App {

/// Proves all of them, each in a process of its own, several at once. onDone hears of each as it is done. Throws
/// Failure (128 and its number) for a signal that ends the program, and (ConversionFailed) where there is no clip to
/// start from.
void ProveAll(const std::vector<Combination>& combinations, const ProveOptions& options, bool isQuiet,
              const std::function<void(const Proof&)>& onDone);

}  // namespace App
