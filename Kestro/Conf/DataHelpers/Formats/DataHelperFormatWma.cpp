#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatWma.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_WMAV2};

constexpr SettingRow kSettings[] = {
    kGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Audio, .codecs = kAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_WMAV2},
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_WMA,
    .settings = kSettings,
    .limits = {.video = 0, .audio = 1, .subtitle = 0, .other = 16},
    .streams = kStreams,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatWma::DataHelperFormatWma() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
