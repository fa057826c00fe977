#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMov.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"

namespace Kestro::Conf {

namespace {

constexpr Text kVideo[] = {IFormatCodecVideo::CODEC_ID_H264, IFormatCodecVideo::CODEC_ID_H265,
                           IFormatCodecVideo::CODEC_ID_MPEG4, IFormatCodecVideo::CODEC_ID_MJPEG};
constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_AAC, IFormatCodecAudio::CODEC_ID_ALAC,
                           IFormatCodecAudio::CODEC_ID_MP3};
constexpr Text kSubtitles[] = {IFormatCodecSubtitle::CODEC_ID_MOV_TEXT};

constexpr SettingRow kSettings[] = {
    kNotProgressive,
    kGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Video, .codecs = kVideo, .defaultCodec = IFormatCodecVideo::CODEC_ID_H264},
    {.type = StreamType::Audio, .codecs = kAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_AAC},
    {.type = StreamType::Subtitle, .codecs = kSubtitles, .defaultCodec = IFormatCodecSubtitle::CODEC_ID_MOV_TEXT},
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_MOV,
    .settings = kSettings,
    .limits = kOneVideoAndMany,
    .streams = kStreams,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatMov::DataHelperFormatMov() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
