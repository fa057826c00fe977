#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// Sorenson H.263, the video of Flash.
class DataHelperVideoCodecFlv1 final : public DataHelperCodecFFMPEG {
public:
    DataHelperVideoCodecFlv1();
};

}  // namespace Kestro::Conf
