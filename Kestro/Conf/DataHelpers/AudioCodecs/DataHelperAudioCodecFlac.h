#pragma once

#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecLossless.h"

namespace Kestro::Conf {

/// FLAC (RFC 9639) of 16 or 24 bits.
class DataHelperAudioCodecFlac final : public DataHelperAudioCodecLossless {
public:
    DataHelperAudioCodecFlac();
};

}  // namespace Kestro::Conf
