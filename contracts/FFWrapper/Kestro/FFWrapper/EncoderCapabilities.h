#pragma once

#include <boost/rational.hpp>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Kestro/Conf/SampleFormats.h"
#include "Kestro/Export.h"

namespace Kestro::FFWrapper {

/// What an encoder of the installed FFmpeg takes; an empty list is no restriction.
struct KESTRO_FFWRAPPER_API EncoderCapabilities {
    std::vector<int> sampleRates;  ///< Hz
    std::vector<Conf::SampleFormats> sampleFormats;
    std::vector<uint64_t> channelLayouts;   ///< FFmpeg channel masks: see ChannelLayoutKestroFromFFMPEG
    std::vector<std::string> pixelFormats;  ///< FFmpeg's names
    std::vector<boost::rational<int64_t>> frameRates;
    /// Values of Conf::IFormatCodec::TAG_PROFILE. FFmpeg does not tell them; known where an encoder writes unreadable
    /// streams under other profiles of its format.
    std::vector<std::string> profiles;

    /// Of the encoder with that FFmpeg name (EncoderNameFromCodecId gives one); nothing when FFmpeg has no such
    /// encoder.
    static std::optional<EncoderCapabilities> Find(const std::string& encoderName);
};

}  // namespace Kestro::FFWrapper
