#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// MPEG-4 part 2 (ISO/IEC 14496-2).
class DataHelperVideoCodecMpeg4 final : public DataHelperCodecFFMPEG {
public:
    DataHelperVideoCodecMpeg4();
};

}  // namespace Kestro::Conf
