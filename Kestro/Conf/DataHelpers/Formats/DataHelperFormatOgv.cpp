#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatOgv.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_OGV,
    .limits = {.video = 1, .audio = 1, .subtitle = 1, .other = 16},
    .streams = {{.type = StreamType::Video,
                 .codecs = {IFormatCodecVideo::CODEC_ID_THEORA},
                 .defaultCodec = IFormatCodecVideo::CODEC_ID_THEORA},
                {.type = StreamType::Audio,
                 .codecs = {IFormatCodecAudio::CODEC_ID_FLAC, IFormatCodecAudio::CODEC_ID_VORBIS},
                 .defaultCodec = IFormatCodecAudio::CODEC_ID_VORBIS}},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatOgv::DataHelperFormatOgv() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
