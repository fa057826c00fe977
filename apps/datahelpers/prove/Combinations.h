#pragma once

#include <vector>

#include "prove/Combination.h"

namespace App {

/// Everything that the helpers offer, combined: each container's defaults, its codecs with one another (each pair of
/// them at least), every value of its and its encoders' settings, what is left to the program, the streams that the
/// library says can be copied, and the filters. Each row once, in the order of the lists that the helpers are in.
std::vector<Combination> AllCombinations();

/// The rows that are about settings of encoders and filters.
std::vector<Combination> SettingCombinations();

/// The few rows that touch every helper: each container, encoder, filter and kind of row.
std::vector<Combination> Sample(const std::vector<Combination>& all);

}  // namespace App
