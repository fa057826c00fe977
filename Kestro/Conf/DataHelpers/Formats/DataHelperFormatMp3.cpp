#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMp3.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_MP3};

constexpr SettingRow kSettings[] = {
    kNoGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Audio, .codecs = kAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_MP3},
    kCover,
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_MP3,
    .settings = kSettings,
    .limits = {.video = 1, .audio = 1, .subtitle = 0, .other = 16},
    .streams = kStreams,
    .rules = kCoverRules,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatMp3::DataHelperFormatMp3() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
