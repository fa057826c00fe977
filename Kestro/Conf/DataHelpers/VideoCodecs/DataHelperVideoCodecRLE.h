#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// QuickTime Animation: run lengths, lossless.
class DataHelperVideoCodecRLE final : public DataHelperCodecFFMPEG {
public:
    DataHelperVideoCodecRLE();
};

}  // namespace Kestro::Conf
