#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// Vorbis I.
class DataHelperAudioCodecVorbis final : public DataHelperCodecFFMPEG {
public:
    DataHelperAudioCodecVorbis();
};

}  // namespace Kestro::Conf
