#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatAC3.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_AC3,
    .limits = {.audio = 1},
    .streams = {{.type = StreamType::Audio,
                 .codecs = {IFormatCodecAudio::CODEC_ID_AC3},
                 .defaultCodec = IFormatCodecAudio::CODEC_ID_AC3}},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatAC3::DataHelperFormatAC3() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
