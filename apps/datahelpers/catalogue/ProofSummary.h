#pragma once

#include <functional>

#include "catalogue/Markup.h"
#include "catalogue/Proof.h"

namespace App::Catalogue {

/// What came of the trials that `belongs` picks: how many came to what, and each with its reason.
Markup ProofOf(const Proof& proof, const std::function<bool(const ProofRow&)>& belongs);

}  // namespace App::Catalogue
