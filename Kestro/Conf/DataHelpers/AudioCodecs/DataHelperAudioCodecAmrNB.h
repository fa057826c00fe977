#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// AMR narrow-band speech (3GPP TS 26.071): mono at 8000 Hz.
class DataHelperAudioCodecAmrNB final : public DataHelperCodecFFMPEG {
public:
    DataHelperAudioCodecAmrNB();
};

}  // namespace Kestro::Conf
