#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMkv.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_MATROSKA,
    .globalHeader = true,
    .limits = kOneVideoAndMany,
    .streams = {{.type = StreamType::Video,
                 .codecs = {IFormatCodecVideo::CODEC_ID_H264, IFormatCodecVideo::CODEC_ID_H265,
                            IFormatCodecVideo::CODEC_ID_MJPEG, IFormatCodecVideo::CODEC_ID_MPEG2VIDEO,
                            IFormatCodecVideo::CODEC_ID_MPEG4, IFormatCodecVideo::CODEC_ID_THEORA,
                            IFormatCodecVideo::CODEC_ID_VP9, IFormatCodecVideo::CODEC_ID_DVVIDEO,
                            IFormatCodecVideo::CODEC_ID_AV1},
                 .defaultCodec = IFormatCodecVideo::CODEC_ID_H264},
                {.type = StreamType::Audio, .codecs = kMatroskaAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_AAC},
                {.type = StreamType::Subtitle,
                 .codecs = {IFormatCodecSubtitle::CODEC_ID_DVB_SUBTITLE, IFormatCodecSubtitle::CODEC_ID_DVD_SUBTITLE,
                            IFormatCodecSubtitle::CODEC_ID_HDMV_PGS_SUBTITLE, IFormatCodecSubtitle::CODEC_ID_SUBRIP,
                            IFormatCodecSubtitle::CODEC_ID_TEXT, IFormatCodecSubtitle::CODEC_ID_ASS,
                            IFormatCodecSubtitle::CODEC_ID_SSA},
                 .defaultCodec = IFormatCodecSubtitle::CODEC_ID_DVB_SUBTITLE}},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatMkv::DataHelperFormatMkv() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
