#pragma once

#include <string>

#include "prove/Clips.h"
#include "prove/Proof.h"

namespace App {

/// Carries out one combination: plans it, converts the footage into the folder, reads the result to its end and holds
/// it against the plan. Whatever goes wrong is in the proof. Throws Failure for a signal alone.
/// missing: why there is no footage; empty: there is.
Proof Prove(const Combination& combination, const Clips& clips, const std::string& missing, const std::string& folder);

}  // namespace App
