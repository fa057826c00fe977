#pragma once

#include <string>

#include "Kestro/Constant.h"

namespace Kestro::Proc {

/// The implementation that resamples audio.
class IResample {
public:
    /// Name of its node inside that of IFilterResample; its settings are named by Conf::IFormatCodecAudio.
    static KESTRO_CONSTANT std::string CLASS_ID = "Resampler";

    IResample() = delete;
};

}  // namespace Kestro::Proc
