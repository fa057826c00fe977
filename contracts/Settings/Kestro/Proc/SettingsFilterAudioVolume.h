#pragma once

#include <cstdint>

namespace Kestro::Proc {

/// Settings of the volume filter.
struct SettingsFilterAudioVolume {
    int64_t volumePercent = 100;  ///< of the source's amplitude; 100 leaves it as it is
};

}  // namespace Kestro::Proc
