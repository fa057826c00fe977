#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatImage.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

DataHelperFormatImage::DataHelperFormatImage(const std::string& container, const std::string& codecId)
    : DataHelperFormatBase({.container = IFormatFile::FORMAT_IMAGE2,
                            .limits = {.video = 1},
                            .streams = {{.type = StreamType::Video, .codecs = {codecId}, .defaultCodec = codecId}}},
                           container) {}

}  // namespace Kestro::Conf
