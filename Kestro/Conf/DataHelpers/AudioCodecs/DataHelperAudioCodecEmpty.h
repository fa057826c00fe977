#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// The audio encoder that the application chooses later: it has no settings of its own to apply or repair.
class DataHelperAudioCodecEmpty final : public DataHelperCodecFFMPEG {
public:
    DataHelperAudioCodecEmpty();

    void ApplyPresetSettings(const Core::Property& preset, Core::Property& settings) const override;
    void CorrectFormatCodec(Core::Property& settings) const override;
};

}  // namespace Kestro::Conf
