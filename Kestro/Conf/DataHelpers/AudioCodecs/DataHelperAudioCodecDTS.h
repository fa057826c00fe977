#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// DTS Coherent Acoustics (ETSI TS 102 114).
class DataHelperAudioCodecDTS final : public DataHelperCodecFFMPEG {
public:
    DataHelperAudioCodecDTS();
};

}  // namespace Kestro::Conf
