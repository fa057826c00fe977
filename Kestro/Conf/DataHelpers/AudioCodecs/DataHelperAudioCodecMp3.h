#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// MP3: MPEG-1 and MPEG-2 audio layer III (ISO/IEC 11172-3, 13818-3), with MPEG-2.5 at 8000, 11025 and 12000 Hz.
class DataHelperAudioCodecMp3 final : public DataHelperCodecFFMPEG {
public:
    DataHelperAudioCodecMp3();
};

}  // namespace Kestro::Conf
