#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "Kestro/Planner/Plan.h"

/// What a planned stream is given for a bitrate of its own.
namespace Kestro::Planner {

/// The highest of the bitrates, bit/s, that the encoder offers that is not above the most, else its lowest; nothing
/// where it has no list of them.
std::optional<int64_t> BitrateUpTo(const PlannedStream& stream, int64_t most);

/// The lowest bitrate, bit/s, that the film's encoder takes.
double LeastBitrate(const PlannedStream& film);

/// What the coarsest quality comes to at the frames that the film has, bit/s: less is not sensible.
double SensibleBitrate(const Plan& plan, std::size_t film);

/// The settings with which the film has that mean bitrate, bit/s, in as many passes as its encoder does, and is
/// otherwise as it is planned. Those that are new have a reason.
std::vector<Choice> SettingsForBitrate(const Plan& plan, std::size_t film, int64_t bitrate);

}  // namespace Kestro::Planner
