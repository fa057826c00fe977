#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatOgg.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_VORBIS};

constexpr SettingRow kSettings[] = {
    kNoGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Audio, .codecs = kAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_VORBIS},
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_OGG,
    .settings = kSettings,
    .limits = {.video = 0, .audio = 1, .subtitle = 0, .other = 16},
    .streams = kStreams,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatOgg::DataHelperFormatOgg() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
