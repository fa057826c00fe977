#pragma once

#include <cstdint>
#include <optional>

#include "Kestro/Planner/Plan.h"

namespace Kestro::Planner {

/// The part of a size that is aimed at: encoders keep to a bitrate by two hundredths or so.
constexpr double kAimOfSize = 0.98;
constexpr double kBitsPerByte = 8;

/// The size, bytes, that a preset's tree sets; nothing when it sets none. Throws NotAcceptable (WrongType).
std::optional<int64_t> ReadSizeLimit(const Core::Property& preset);

/// Whether the stream is video whose size follows its bitrate: no cover.
bool IsFilm(const PlannedStream& stream);

/// bit/s; 0 where none is known.
double BitrateOf(const Core::Property& codec);

/// About the bytes of all that is no film: sound, covers, and what the container adds. The input's duration is known.
double OtherBytes(const Plan& plan);

}  // namespace Kestro::Planner
