#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// H.264 (ITU-T H.264, ISO/IEC 14496-10) with the presets, tunes and profiles of its encoder.
class DataHelperVideoCodecX264 final : public DataHelperCodecFFMPEG {
public:
    DataHelperVideoCodecX264();
};

}  // namespace Kestro::Conf
