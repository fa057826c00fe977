#pragma once

#include <iosfwd>
#include <map>
#include <vector>

#include "prove/Proof.h"

namespace App {

/// How many rows have each verdict.
using Counts = std::map<Verdict, std::size_t>;
Counts Count(const std::vector<Proof>& rows);
Json ToJson(const Counts& counts);

/// Rows with the same reason: who says it and why, and how many.
struct Reason {
    std::string by;
    std::string why;  ///< what differs from row to row, the row's own codecs and values, stands as "…"
    std::size_t count = 0;
    std::string example;  ///< a row's id
};
/// The reasons of that verdict, the most frequent first.
std::vector<Reason> Reasons(const std::vector<Proof>& rows, Verdict verdict);

/// What the rows are about, in the order in which they come first.
std::vector<std::string> Subjects(const std::vector<Proof>& rows);

/// Counts by what the rows are about, who refused how many and why, and each contradiction in a line.
void PrintProof(std::ostream& out, const std::vector<Proof>& rows, std::size_t width);

}  // namespace App
