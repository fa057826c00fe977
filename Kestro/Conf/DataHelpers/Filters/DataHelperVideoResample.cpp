#include "Kestro/Conf/DataHelpers/Filters/DataHelperVideoResample.h"

#include "Kestro/Conf/DataHelpers/Sheet.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/SettingsFilterFrameRate.h"

namespace Kestro::Conf {

DataHelperVideoResample::DataHelperVideoResample() {
    Constrain(IFormatCodecVideo::TAG_FPS, MakeConstraint(Rates{FrameRates::kAll}));
}

Core::Property DataHelperVideoResample::GetDefaultSettings() const {
    return Proc::IFilterFrameRate::MakeSettings(boost::rational<int64_t>(25, 1));
}

void DataHelperVideoResample::ApplyPresetSettings(const Core::Property& source, Core::Property& target) const {
    const auto rate = source[IFormatCodecVideo::TAG_FPS].GetRatio();
    if (rate == Proc::SettingsFilterFrameRate::MARK_USE_ORIGINAL_FRAMERATE) return;
    target.SetChild(IFormatCodecVideo::TAG_FPS, rate);
}

}  // namespace Kestro::Conf
