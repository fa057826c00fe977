#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatWav.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_PCM_S16LE};

constexpr SettingRow kSettings[] = {
    kNoGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Audio, .codecs = kAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_PCM_S16LE},
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_WAV,
    .settings = kSettings,
    .limits = {.video = 0, .audio = 1, .subtitle = 0, .other = 16},
    .streams = kStreams,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatWav::DataHelperFormatWav(const std::string& container) : DataHelperFormatBase(kSheet, container) {}

}  // namespace Kestro::Conf
