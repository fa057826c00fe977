#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMp3.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_MP3,
    .limits = {.video = 1, .audio = 1, .other = 16},
    .streams = {{.type = StreamType::Audio,
                 .codecs = {IFormatCodecAudio::CODEC_ID_MP3},
                 .defaultCodec = IFormatCodecAudio::CODEC_ID_MP3},
                kCover},
    .rules = {kCoverRule},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatMp3::DataHelperFormatMp3() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
