#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// MPEG-1 video (ISO/IEC 11172-2).
class DataHelperVideoCodecMpeg1 final : public DataHelperCodecFFMPEG {
public:
    DataHelperVideoCodecMpeg1();
};

}  // namespace Kestro::Conf
