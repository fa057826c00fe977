#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// Ut Video, lossless: its bitrate follows from the picture.
class DataHelperVideoCodecUTVideo final : public DataHelperCodecFFMPEG {
public:
    DataHelperVideoCodecUTVideo();
};

}  // namespace Kestro::Conf
