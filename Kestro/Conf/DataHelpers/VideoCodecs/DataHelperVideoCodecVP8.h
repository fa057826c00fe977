#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// VP8 (RFC 6386).
class DataHelperVideoCodecVP8 final : public DataHelperCodecFFMPEG {
public:
    DataHelperVideoCodecVP8();
};

}  // namespace Kestro::Conf
