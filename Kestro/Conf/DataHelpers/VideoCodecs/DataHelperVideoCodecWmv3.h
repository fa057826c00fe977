#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// Windows Media Video 9, which FFmpeg cannot encode: the registry leaves it out.
class DataHelperVideoCodecWmv3 final : public DataHelperCodecFFMPEG {
public:
    DataHelperVideoCodecWmv3();
};

}  // namespace Kestro::Conf
