#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// VP9 (VP9 Bitstream & Decoding Process).
class DataHelperVideoCodecVP9 final : public DataHelperCodecFFMPEG {
public:
    DataHelperVideoCodecVP9();
};

}  // namespace Kestro::Conf
