#include "Kestro/Conf/DataHelpers/Filters/DataHelperVideoResample.h"

#include "Kestro/Conf/DataHelpers/Sheet.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/SettingsFilterFrameRate.h"

namespace Kestro::Conf {

namespace {

constexpr FrameRate kFrameRates[] = {
    FrameRates::kSource, {8, 1, "8"},           {10, 1, "10"},     {12, 1, "12"},          {15, 1, "15"},
    {20, 1, "20"},       FrameRates::kNtscFilm, FrameRates::kFilm, FrameRates::kPal,       FrameRates::kNtsc,
    FrameRates::k30,     {48, 1, "48"},         FrameRates::k50,   FrameRates::kNtscField, FrameRates::k60,
    {100, 1, "100"},     {120, 1, "120"},
};

}  // namespace

DataHelperVideoResample::DataHelperVideoResample() {
    Constrain(IFormatCodecVideo::TAG_FPS, MakeConstraint(Rates{kFrameRates}));
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
