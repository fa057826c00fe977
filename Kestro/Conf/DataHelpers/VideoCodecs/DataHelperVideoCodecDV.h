#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// DV and its relatives (IEC 61834, SMPTE 314M and 370M): frames have one of the sizes and rates of the profiles.
class DataHelperVideoCodecDV final : public DataHelperCodecFFMPEG {
public:
    DataHelperVideoCodecDV();
};

}  // namespace Kestro::Conf
