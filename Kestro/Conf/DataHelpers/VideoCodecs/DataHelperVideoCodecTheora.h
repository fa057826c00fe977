#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// Theora.
class DataHelperVideoCodecTheora final : public DataHelperCodecFFMPEG {
public:
    DataHelperVideoCodecTheora();
};

}  // namespace Kestro::Conf
