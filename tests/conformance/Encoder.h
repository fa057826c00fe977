#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Kestro/Core/Property.h"

namespace Kestro::Conf {

/// What became of half a second of noise, or of a few frames of a moving picture, in FFmpeg's encoder.
struct Encoded {
    int sent = 0;          ///< frames
    int decoded = 0;       ///< frames that FFmpeg's decoder reads
    int64_t bytes = 0;     ///< of the packets
    double bitrate = 0.0;  ///< bit/s of the packets
    /// Under the tags of a codec node. What the decoder reads: sample rate and layout; or frame size and rate, longest
    /// run of B-frames, profile where it is one of the vocabulary's. What the encoder says of itself after it was
    /// opened: key-frame interval, and the bitrate where it was asked for one.
    Core::Property settings;
};

/// Encodes with all that a codec node says; quality is what the program makes of it. Nothing when the encoder does not
/// take that.
std::optional<Encoded> Encode(const std::string& encoderName, const Core::Property& codec);

/// Whether the encoder opens so.
bool Opens(const std::string& encoderName, const Core::Property& codec);

}  // namespace Kestro::Conf
