#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatWebm.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_WEBM,
    .globalHeader = true,
    .limits = kOneVideoAndMany,
    .streams = {{.type = StreamType::Video,
                 .codecs = {IFormatCodecVideo::CODEC_ID_VP8, IFormatCodecVideo::CODEC_ID_VP9},
                 .defaultCodec = IFormatCodecVideo::CODEC_ID_VP8},
                {.type = StreamType::Audio,
                 .codecs = {IFormatCodecAudio::CODEC_ID_VORBIS},
                 .defaultCodec = IFormatCodecAudio::CODEC_ID_VORBIS}},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatWebm::DataHelperFormatWebm() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
