#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatSubtitleText.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr SettingRow kSettings[] = {
    kGlobalHeader,
};
constexpr StreamLimits kLimits{.video = 0, .audio = 0, .subtitle = 1, .other = 0};

}  // namespace

DataHelperFormatSubtitleText::DataHelperFormatSubtitleText(const std::string& container, const std::string& codecId)
    : DataHelperFormatBase(OneStreamSheet(StreamType::Subtitle, codecId, kSettings, kLimits).sheet, container) {}

}  // namespace Kestro::Conf
