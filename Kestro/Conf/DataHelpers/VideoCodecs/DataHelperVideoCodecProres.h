#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// Apple ProRes (SMPTE RDD 36).
class DataHelperVideoCodecProres final : public DataHelperCodecFFMPEG {
public:
    DataHelperVideoCodecProres();
};

}  // namespace Kestro::Conf
