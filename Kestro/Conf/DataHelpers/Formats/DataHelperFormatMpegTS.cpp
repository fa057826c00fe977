#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMpegTS.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"

namespace Kestro::Conf {

namespace {

constexpr Text kVideo[] = {IFormatCodecVideo::CODEC_ID_MPEG2VIDEO, IFormatCodecVideo::CODEC_ID_H264,
                           IFormatCodecVideo::CODEC_ID_H265};
constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_MP2, IFormatCodecAudio::CODEC_ID_MP3,
                           IFormatCodecAudio::CODEC_ID_AAC, IFormatCodecAudio::CODEC_ID_AC3};
constexpr Text kSubtitles[] = {IFormatCodecSubtitle::CODEC_ID_DVB_SUBTITLE,
                               IFormatCodecSubtitle::CODEC_ID_DVB_TELETEXT};

constexpr SettingRow kSettings[] = {
    kNoGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Video, .codecs = kVideo, .defaultCodec = IFormatCodecVideo::CODEC_ID_MPEG2VIDEO},
    {.type = StreamType::Audio, .codecs = kAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_MP2},
    {.type = StreamType::Subtitle, .codecs = kSubtitles, .defaultCodec = IFormatCodecSubtitle::CODEC_ID_DVB_SUBTITLE},
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_MPEGTS,
    .settings = kSettings,
    .limits = kOneVideoAndMany,
    .streams = kStreams,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatMpegTS::DataHelperFormatMpegTS() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
