#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// Windows Media Audio 2.
class DataHelperAudioCodecWmav2 final : public DataHelperCodecFFMPEG {
public:
    DataHelperAudioCodecWmav2();
};

}  // namespace Kestro::Conf
