#include "Kestro/Conf/DataHelpers/Filters/DataHelperAudioFormatter.h"

#include "Kestro/Conf/IPreset.h"
#include "Kestro/Proc/IAudioFormatter.h"
#include "Kestro/Proc/IFilterAudioFormatter.h"
#include "Kestro/Proc/ImplNames.h"

namespace Kestro::Conf {

boost::intrusive_ptr<const IDataHelper> DataHelperAudioFormatter::Create() { return new DataHelperAudioFormatter(); }

Core::Property DataHelperAudioFormatter::GetDefaultSettings() const {
    constexpr int64_t kPacketDuration = 100'000;
    Core::Property settings(Proc::IFilterAudioFormatter::CLASS_ID);
    settings.SetChild(Proc::IAudioFormatter::CLASS_ID).SetChild(IPreset::KEY_TYPE_ID, Proc::ImplNames::DEFAULT);
    settings.SetChild(Proc::IFilterAudioFormatter::PACKET_DURATION, kPacketDuration);
    return settings;
}

}  // namespace Kestro::Conf
