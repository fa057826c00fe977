#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatOgg.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_OGG,
    .limits = {.audio = 1, .other = 16},
    .streams = {{.type = StreamType::Audio,
                 .codecs = {IFormatCodecAudio::CODEC_ID_VORBIS},
                 .defaultCodec = IFormatCodecAudio::CODEC_ID_VORBIS}},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatOgg::DataHelperFormatOgg() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
