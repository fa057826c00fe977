#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatFlac.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_FLAC};

constexpr SettingRow kSettings[] = {
    kNoGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Audio, .codecs = kAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_FLAC},
    kCover,
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_FLAC,
    .settings = kSettings,
    .limits = {.video = 1, .audio = 1, .subtitle = 0, .other = 16},
    .streams = kStreams,
    .rules = kCoverRules,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatFlac::DataHelperFormatFlac() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
