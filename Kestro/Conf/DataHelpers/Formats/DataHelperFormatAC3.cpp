#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatAC3.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_AC3};

constexpr SettingRow kSettings[] = {
    kNoGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Audio, .codecs = kAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_AC3},
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_AC3,
    .settings = kSettings,
    .limits = {.video = 0, .audio = 1, .subtitle = 0, .other = 0},
    .streams = kStreams,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatAC3::DataHelperFormatAC3() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
