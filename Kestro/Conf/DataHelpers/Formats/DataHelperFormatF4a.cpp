#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatF4a.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_MP3, IFormatCodecAudio::CODEC_ID_AAC};

constexpr SettingRow kSettings[] = {
    kGlobalHeader,
    kNotForPsp,
    kNotProgressive,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Audio, .codecs = kAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_AAC},
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_F4A,
    .settings = kSettings,
    .limits = {.video = 0, .audio = 1, .subtitle = 0, .other = 0},
    .streams = kStreams,
    .rules = kFlashRules,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatF4a::DataHelperFormatF4a() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
