#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMpegTS.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"

namespace Kestro::Conf {

namespace {

constexpr SettingRow kSettings[] = {
    kNoGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Video, .codecs = kTransportVideo, .defaultCodec = IFormatCodecVideo::CODEC_ID_MPEG2VIDEO},
    {.type = StreamType::Audio, .codecs = kTransportAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_MP2},
    {.type = StreamType::Subtitle,
     .codecs = kTransportSubtitles,
     .defaultCodec = IFormatCodecSubtitle::CODEC_ID_DVB_SUBTITLE},
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
