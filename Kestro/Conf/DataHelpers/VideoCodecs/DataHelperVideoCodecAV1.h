#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// AV1 (AV1 Bitstream & Decoding Process).
class DataHelperVideoCodecAV1 final : public DataHelperCodecFFMPEG {
public:
    DataHelperVideoCodecAV1();
};

}  // namespace Kestro::Conf
