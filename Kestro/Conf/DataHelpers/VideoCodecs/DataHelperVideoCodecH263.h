#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// H.263 (ITU-T H.263) of 1996.
class DataHelperVideoCodecH263 final : public DataHelperCodecFFMPEG {
public:
    DataHelperVideoCodecH263();
};

}  // namespace Kestro::Conf
