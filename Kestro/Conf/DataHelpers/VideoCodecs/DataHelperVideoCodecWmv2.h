#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// Windows Media Video 8.
class DataHelperVideoCodecWmv2 final : public DataHelperCodecFFMPEG {
public:
    DataHelperVideoCodecWmv2();
};

}  // namespace Kestro::Conf
