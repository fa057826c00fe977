#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// MPEG-2 video (ISO/IEC 13818-2).
class DataHelperVideoCodecMpeg2 final : public DataHelperCodecFFMPEG {
public:
    DataHelperVideoCodecMpeg2();
};

}  // namespace Kestro::Conf
