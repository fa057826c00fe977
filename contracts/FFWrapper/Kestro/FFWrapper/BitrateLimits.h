#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Kestro/Conf/ChannelLayout.h"
#include "Kestro/Export.h"

namespace Kestro::FFWrapper {

/// The bitrates, bit/s, that an encoder takes at one sample rate and channel layout.
struct KESTRO_FFWRAPPER_API BitrateLimits {
    int64_t lowest;
    int64_t highest;

    /// Of the encoder with that FFmpeg name, where it refuses others; sampleRate in Hz. Nothing for an encoder whose
    /// limits do not go by rate and layout, and for a layout without a record.
    static std::optional<BitrateLimits> Find(const std::string& encoderName, int64_t sampleRate,
                                             Conf::ChannelLayout layout);
};

}  // namespace Kestro::FFWrapper
