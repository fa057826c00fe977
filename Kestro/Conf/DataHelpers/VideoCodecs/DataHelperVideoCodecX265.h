#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// H.265 (ITU-T H.265, ISO/IEC 23008-2).
class DataHelperVideoCodecX265 final : public DataHelperCodecFFMPEG {
public:
    DataHelperVideoCodecX265();
};

}  // namespace Kestro::Conf
