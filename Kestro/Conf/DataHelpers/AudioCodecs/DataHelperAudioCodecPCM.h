#pragma once

#include <string>

#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecLossless.h"

namespace Kestro::Conf {

/// Linear PCM of 8, 16, 24 or 32 bits, signed or unsigned, of either byte order.
class DataHelperAudioCodecPCM final : public DataHelperAudioCodecLossless {
public:
    /// codecId: one of IFormatCodecAudio::CODEC_ID_PCM_. Only the sample format that holds its bits is accepted, so the
    /// bitrate is exact.
    explicit DataHelperAudioCodecPCM(const std::string& codecId);
};

}  // namespace Kestro::Conf
