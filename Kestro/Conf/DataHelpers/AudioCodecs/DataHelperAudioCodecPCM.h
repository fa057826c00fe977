#pragma once

#include <string>

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// Linear PCM of 8, 16, 24 or 32 bits, signed or unsigned, of either byte order.
class DataHelperAudioCodecPCM final : public DataHelperCodecFFMPEG {
public:
    /// codecId: one of IFormatCodecAudio::CODEC_ID_PCM_. Only the sample format that holds its bits is accepted. The
    /// bitrate is computed from that format: for 24 bits, which come in 32, it is a third more than the stream has.
    explicit DataHelperAudioCodecPCM(const std::string& codecId);
};

}  // namespace Kestro::Conf
