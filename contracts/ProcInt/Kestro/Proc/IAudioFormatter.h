#pragma once

#include <string>

#include "Kestro/Constant.h"

namespace Kestro::Proc {

/// The implementation that cuts audio into packets.
class IAudioFormatter {
public:
    /// Name of its node inside that of IFilterAudioFormatter.
    static KESTRO_CONSTANT std::string CLASS_ID = "Packetizer";

    IAudioFormatter() = delete;
};

}  // namespace Kestro::Proc
