#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// MPEG-1 audio layer II (ISO/IEC 11172-3).
class DataHelperAudioCodecMp2 final : public DataHelperCodecFFMPEG {
public:
    DataHelperAudioCodecMp2();
};

}  // namespace Kestro::Conf
