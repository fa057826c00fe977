#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// AC-3 (ATSC A/52).
class DataHelperAudioCodecAc3 final : public DataHelperCodecFFMPEG {
public:
    DataHelperAudioCodecAc3();
};

}  // namespace Kestro::Conf
