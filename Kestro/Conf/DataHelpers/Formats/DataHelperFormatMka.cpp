#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMka.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr SettingRow kSettings[] = {
    kGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Audio, .codecs = kMatroskaAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_AAC},
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_MKA,
    .settings = kSettings,
    .limits = {.video = 0, .audio = 16, .subtitle = 16, .other = 16},
    .streams = kStreams,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatMka::DataHelperFormatMka() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
