#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Kestro/Conf/ChannelLayout.h"
#include "Kestro/Export.h"

namespace Kestro::FFWrapper {

/// The bitrates, bit/s, that an encoder takes.
struct KESTRO_FFWRAPPER_API BitrateLimits {
    int64_t lowest;
    int64_t highest;

    /// Of the audio encoder with that FFmpeg name at a sample rate, Hz, and layout. Nothing for an encoder that takes
    /// any, and for a layout without a record.
    static std::optional<BitrateLimits> OfAudio(const std::string& encoderName, int64_t sampleRate,
                                                Conf::ChannelLayout layout);
    /// Of the video encoder with that FFmpeg name. Nothing for an encoder that takes any.
    static std::optional<BitrateLimits> OfVideo(const std::string& encoderName);
};

}  // namespace Kestro::FFWrapper
