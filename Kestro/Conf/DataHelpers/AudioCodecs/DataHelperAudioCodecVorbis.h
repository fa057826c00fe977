#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// Vorbis I.
class DataHelperAudioCodecVorbis final : public DataHelperCodecFFMPEG {
public:
    DataHelperAudioCodecVorbis();

    /// As the base does, then the offered bitrate that is nearest to the given one among those that the encoder takes
    /// at that sample rate and number of channels.
    void CorrectFormatCodec(Core::Property& settings) const override;
};

}  // namespace Kestro::Conf
