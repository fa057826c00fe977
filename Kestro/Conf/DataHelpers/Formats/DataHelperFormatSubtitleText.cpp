#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatSubtitleText.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

DataHelperFormatSubtitleText::DataHelperFormatSubtitleText(const std::string& container, const std::string& codecId)
    : DataHelperFormatBase({.container = IFormatFile::FORMAT_IMAGE2,
                            .globalHeader = true,
                            .limits = {.subtitle = 1},
                            .streams = {{.type = StreamType::Subtitle, .codecs = {codecId}, .defaultCodec = codecId}}},
                           container) {}

}  // namespace Kestro::Conf
