#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatFlv.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"

namespace Kestro::Conf {

namespace {

constexpr Text kVideo[] = {IFormatCodecVideo::CODEC_ID_FLV1, IFormatCodecVideo::CODEC_ID_H264};
constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_MP3, IFormatCodecAudio::CODEC_ID_AAC};
constexpr Text kSubtitles[] = {IFormatCodecSubtitle::CODEC_ID_TEXT};

constexpr SettingRow kSettings[] = {
    kGlobalHeader,
    kNotForPsp,
    kNotProgressive,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Video, .codecs = kVideo, .defaultCodec = IFormatCodecVideo::CODEC_ID_FLV1},
    {.type = StreamType::Audio, .codecs = kAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_AAC},
    {.type = StreamType::Subtitle, .codecs = kSubtitles, .defaultCodec = IFormatCodecSubtitle::CODEC_ID_TEXT},
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_FLV,
    .settings = kSettings,
    .limits = {.video = 1, .audio = 1, .subtitle = 0, .other = 0},
    .streams = kStreams,
    .rules = kFlashRules,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatFlv::DataHelperFormatFlv() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
