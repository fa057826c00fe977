#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatSrt.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"

namespace Kestro::Conf {

namespace {

constexpr Text kSubtitles[] = {IFormatCodecSubtitle::CODEC_ID_SRT, IFormatCodecSubtitle::CODEC_ID_SUBRIP};

constexpr SettingRow kSettings[] = {
    kNoGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Subtitle, .codecs = kSubtitles, .defaultCodec = IFormatCodecSubtitle::CODEC_ID_SRT},
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_SRT,
    .settings = kSettings,
    .limits = {.video = 0, .audio = 0, .subtitle = 1, .other = 0},
    .streams = kStreams,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatSrt::DataHelperFormatSrt() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
