#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Kestro/Core/Property.h"

namespace Kestro::Conf {

/// What became of a short moving picture in FFmpeg's encoder.
struct EncodedVideo {
    int sent = 0;
    int decoded = 0;    ///< how many of them FFmpeg's decoder reads
    int64_t bytes = 0;  ///< of the packets
    /// Under the tags of a codec node. What the decoder reads: frame size and rate, longest run of B-frames, profile
    /// where it is one of the vocabulary's. What the encoder says of itself after it was opened: key-frame interval,
    /// and the bitrate where it was asked for one.
    Core::Property settings;
};

/// Encodes with the frame size and rate, mode, bitrate, quality, passes, header flag and options of a codec node.
/// Nothing when the encoder does not take them.
std::optional<EncodedVideo> EncodeVideo(const std::string& encoderName, const Core::Property& codec);

}  // namespace Kestro::Conf
