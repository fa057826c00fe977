#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// AAC (ISO/IEC 14496-3).
class DataHelperAudioCodecAac final : public DataHelperCodecFFMPEG {
public:
    DataHelperAudioCodecAac();
};

}  // namespace Kestro::Conf
