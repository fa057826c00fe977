#include "Kestro/Conf/DataHelpers/Filters/DataHelperAudioVolume.h"

#include "Kestro/Conf/DataHelpers/Sheet.h"
#include "Kestro/Proc/IFilterAudioVolume.h"

namespace Kestro::Conf {

DataHelperAudioVolume::DataHelperAudioVolume() {
    Constrain(Proc::IFilterAudioVolume::VOLUME_VALUE, MakeConstraint(Range{.lo = 0, .hi = 200}));
}

Core::Property DataHelperAudioVolume::GetDefaultSettings() const {
    return Proc::IFilterAudioVolume::Settings2Property(Proc::SettingsFilterAudioVolume());
}

}  // namespace Kestro::Conf
