#pragma once

#include <string>

#include "Kestro/Constant.h"
#include "Kestro/Core/Property.h"
#include "Kestro/Export.h"
#include "Kestro/Proc/SettingsFilterAudioVolume.h"

namespace Kestro::Proc {

/// The filter that changes the loudness of audio.
class KESTRO_PROCINT_API IFilterAudioVolume {
public:
    static KESTRO_CONSTANT std::string CLASS_ID = "AudioVolume";
    /// Percent of the source's amplitude, integer.
    static KESTRO_CONSTANT std::string VOLUME_VALUE = "VolumePercent";

    /// AudioVolume { VolumePercent }.
    static Core::Property Settings2Property(const SettingsFilterAudioVolume& settings);

    IFilterAudioVolume() = delete;
};

}  // namespace Kestro::Proc
