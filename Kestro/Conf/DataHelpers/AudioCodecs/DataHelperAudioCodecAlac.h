#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// Apple Lossless of 16 or 24 bits.
class DataHelperAudioCodecAlac final : public DataHelperCodecFFMPEG {
public:
    DataHelperAudioCodecAlac();
};

}  // namespace Kestro::Conf
