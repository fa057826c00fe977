#pragma once

#include <string>
#include <vector>

#include "prove/ProofFile.h"

namespace App {

/// Why rows contradict what is offered, where that is known and stays so.
struct Explanation {
    std::vector<std::string> ids;  ///< texts of which a row's name has one; empty: any row
    std::string why;               ///< a text in what the row says
    std::string explanation;       ///< sentences
};

/// Throws Failure (WrongUsage).
std::vector<Explanation> ReadExplanations(const std::string& path);
/// Null: nobody knows.
const Explanation* Explain(const Proof& row, const std::vector<Explanation>& explanations);

/// A page in Markdown of one or more proofs, side by side.
std::string ProofPage(const std::vector<ProofRecord>& proofs, const std::vector<Explanation>& explanations);

}  // namespace App
