#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatSwf.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr Text kVideo[] = {IFormatCodecVideo::CODEC_ID_FLV1, IFormatCodecVideo::CODEC_ID_MJPEG};
constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_MP3};

constexpr SettingRow kSettings[] = {
    kNoGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Video, .codecs = kVideo, .defaultCodec = IFormatCodecVideo::CODEC_ID_MJPEG},
    {.type = StreamType::Audio, .codecs = kAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_MP3},
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_SWF,
    .settings = kSettings,
    .limits = {.video = 1, .audio = 1, .subtitle = 0, .other = 0},
    .streams = kStreams,
    .rules = kFlashRules,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatSwf::DataHelperFormatSwf() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
