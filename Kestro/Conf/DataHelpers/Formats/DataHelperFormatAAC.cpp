#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatAAC.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_AAC,
    .limits = {.audio = 1},
    .streams = {{.type = StreamType::Audio,
                 .codecs = {IFormatCodecAudio::CODEC_ID_AAC},
                 .defaultCodec = IFormatCodecAudio::CODEC_ID_AAC}},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatAAC::DataHelperFormatAAC() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
