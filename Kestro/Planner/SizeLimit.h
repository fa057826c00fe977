#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Kestro/Planner/Export.h"
#include "Kestro/Planner/Plan.h"

/// Outputs that must not be larger than so many bytes.
namespace Kestro::Planner {

/// The part of the limit below which a file is smaller than it need be.
constexpr double kLeastOfSize = 0.96;

/// "25M" as bytes: a number with k, M or G for thousands, millions and thousands of millions, or none, and B after it
/// or not. Nothing for another text, and for less than one byte.
KESTRO_PLANNER_API std::optional<int64_t> ParseSize(std::string_view text);

/// The plan with other bitrates, by the size of what it made: `written` bytes. Nothing when that is not above the limit
/// and at most 4 % below it, and when no other bitrate is to be had.
KESTRO_PLANNER_API std::optional<Plan> CorrectedForSize(const Plan& plan, int64_t written);

/// A sentence for each stream whose bitrate was corrected from the plan's.
KESTRO_PLANNER_API std::vector<std::string> OtherBitrates(const Plan& plan, const Plan& corrected);

}  // namespace Kestro::Planner
