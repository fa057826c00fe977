#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatFlac.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_FLAC,
    .limits = {.video = 1, .audio = 1, .other = 16},
    .streams = {{.type = StreamType::Audio,
                 .codecs = {IFormatCodecAudio::CODEC_ID_FLAC},
                 .defaultCodec = IFormatCodecAudio::CODEC_ID_FLAC},
                kCover},
    .rules = {kCoverRule},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatFlac::DataHelperFormatFlac() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
