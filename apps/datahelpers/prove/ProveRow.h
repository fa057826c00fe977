#pragma once

#include <string>

#include "prove/Clips.h"
#include "prove/Proof.h"

namespace App {

/// Why there is no footage for a combination; there is one where `why` is empty.
struct Missing {
    std::string why;
    bool isNoEncoder = false;
};

/// Carries out one combination: plans it, converts the footage into the folder, reads the result to its end and holds
/// it against the plan. Whatever goes wrong is in the proof. Throws Failure for a signal alone.
Proof Prove(const Combination& combination, const Clips& clips, const Missing& missing, const std::string& folder);

}  // namespace App
