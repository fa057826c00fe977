#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// FLAC (RFC 9639) of 16 or 24 bits.
class DataHelperAudioCodecFlac final : public DataHelperCodecFFMPEG {
public:
    DataHelperAudioCodecFlac();
};

}  // namespace Kestro::Conf
