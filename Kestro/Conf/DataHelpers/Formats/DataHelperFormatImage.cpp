#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatImage.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr SettingRow kSettings[] = {
    kNoGlobalHeader,
};
constexpr StreamLimits kLimits{.video = 1, .audio = 0, .subtitle = 0, .other = 0};

}  // namespace

DataHelperFormatImage::DataHelperFormatImage(const std::string& container, const std::string& codecId)
    : DataHelperFormatBase(OneStreamSheet(StreamType::Video, codecId, kSettings, kLimits).sheet, container) {}

}  // namespace Kestro::Conf
