#include "Kestro/Proc/IFilterAudioVolume.h"

namespace Kestro::Proc {

Core::Property IFilterAudioVolume::Settings2Property(const SettingsFilterAudioVolume& settings) {
    Core::Property tree(CLASS_ID);
    tree.SetChild(VOLUME_VALUE, settings.volumePercent);
    return tree;
}

}  // namespace Kestro::Proc
