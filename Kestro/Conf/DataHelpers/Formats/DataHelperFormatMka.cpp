#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMka.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_MKA,
    .globalHeader = true,
    .limits = {.audio = 16, .subtitle = 16, .other = 16},
    .streams = {{.type = StreamType::Audio, .codecs = kMatroskaAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_AAC}},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatMka::DataHelperFormatMka() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
