#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatWma.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_WMA,
    .globalHeader = true,
    .limits = {.audio = 1, .other = 16},
    .streams = {{.type = StreamType::Audio,
                 .codecs = {IFormatCodecAudio::CODEC_ID_WMAV2},
                 .defaultCodec = IFormatCodecAudio::CODEC_ID_WMAV2}},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatWma::DataHelperFormatWma() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
