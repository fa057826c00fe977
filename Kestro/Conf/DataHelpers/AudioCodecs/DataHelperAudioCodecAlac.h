#pragma once

#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecLossless.h"

namespace Kestro::Conf {

/// Apple Lossless of 16 or 24 bits.
class DataHelperAudioCodecAlac final : public DataHelperAudioCodecLossless {
public:
    DataHelperAudioCodecAlac();
};

}  // namespace Kestro::Conf
