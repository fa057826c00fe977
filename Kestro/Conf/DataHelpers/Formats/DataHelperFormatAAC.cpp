#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatAAC.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_AAC};

constexpr SettingRow kSettings[] = {
    kNoGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Audio, .codecs = kAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_AAC},
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_AAC,
    .settings = kSettings,
    .limits = {.video = 0, .audio = 1, .subtitle = 0, .other = 0},
    .streams = kStreams,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatAAC::DataHelperFormatAAC() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
