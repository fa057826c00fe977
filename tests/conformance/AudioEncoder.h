#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Kestro/Core/Property.h"

namespace Kestro::Conf {

/// What became of half a second of noise in FFmpeg's encoder.
struct Encoded {
    int64_t sampleRate = 0;  ///< Hz, as FFmpeg's decoder reads it; 0 when it reads nothing
    std::string layout;      ///< the same
    double bitrate = 0.0;    ///< bit/s of the packets
    /// What the encoder itself said of its bitrate after it was opened; 0 where it says nothing.
    int64_t openedBitrate = 0;
};

/// Encodes with the rate, layout, sample format, mode, bitrate, quality and options of a codec node. Nothing when the
/// encoder does not take them.
std::optional<Encoded> Encode(const std::string& encoderName, const Core::Property& codec);

/// Whether the encoder opens with them.
bool Opens(const std::string& encoderName, const Core::Property& codec);

}  // namespace Kestro::Conf
