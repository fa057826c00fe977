#pragma once

#include <string>

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// Linear PCM of 8, 16, 24 or 32 bits, signed or unsigned, of either byte order.
class DataHelperAudioCodecPCM final : public DataHelperCodecFFMPEG {
public:
    /// codecId: one of IFormatCodecAudio::CODEC_ID_PCM_. Only the sample format that holds its bits is accepted. The
    /// bitrate is that of the samples given; those of 24 bits come in 32, so that a stream of them has three quarters
    /// of it.
    explicit DataHelperAudioCodecPCM(const std::string& codecId);
};

}  // namespace Kestro::Conf
