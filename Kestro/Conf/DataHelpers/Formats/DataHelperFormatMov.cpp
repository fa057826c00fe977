#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMov.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_MOV,
    .settingsBeforeHeader = {kNotProgressive},
    .globalHeader = true,
    .limits = kOneVideoAndMany,
    .streams = {{.type = StreamType::Video,
                 .codecs = {IFormatCodecVideo::CODEC_ID_H264, IFormatCodecVideo::CODEC_ID_H265,
                            IFormatCodecVideo::CODEC_ID_MPEG4, IFormatCodecVideo::CODEC_ID_MJPEG},
                 .defaultCodec = IFormatCodecVideo::CODEC_ID_H264},
                {.type = StreamType::Audio,
                 .codecs = {IFormatCodecAudio::CODEC_ID_AAC, IFormatCodecAudio::CODEC_ID_ALAC,
                            IFormatCodecAudio::CODEC_ID_MP3},
                 .defaultCodec = IFormatCodecAudio::CODEC_ID_AAC},
                {.type = StreamType::Subtitle,
                 .codecs = {IFormatCodecSubtitle::CODEC_ID_MOV_TEXT},
                 .defaultCodec = IFormatCodecSubtitle::CODEC_ID_MOV_TEXT}},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatMov::DataHelperFormatMov() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
