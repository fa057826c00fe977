#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "Kestro/Planner/Plan.h"

/// What a planned stream is given for a bitrate of its own.
namespace Kestro::Planner {

/// Of the bitrates that the encoder lists, bit/s, the highest that is at most `most`, or its lowest where all are
/// above; nothing for an encoder without a list.
std::optional<int64_t> BitrateUpTo(const PlannedStream& stream, int64_t most);

/// The lowest bitrate, bit/s, that the film's encoder takes.
double LeastBitrate(const PlannedStream& film);

/// The bitrate, bit/s, that the coarsest quality gives at the film's frame size and rate; a lower one is not sensible.
double SensibleBitrate(const Plan& plan, std::size_t film);

/// The settings that give the film that mean bitrate, bit/s, in two passes where its encoder has them, and leave it
/// otherwise as it is planned; each with its reason.
std::vector<Choice> SettingsForBitrate(const Plan& plan, std::size_t film, int64_t bitrate);

}  // namespace Kestro::Planner
