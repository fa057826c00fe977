#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatGif.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr Text kVideo[] = {IFormatCodecVideo::CODEC_ID_GIF};
constexpr FrameRate kRates[] = {
    FrameRates::kSource,   FrameRates::k8,    FrameRates::k10,  FrameRates::k12,   FrameRates::k15, FrameRates::k20,
    FrameRates::kNtscFilm, FrameRates::kFilm, FrameRates::kPal, FrameRates::kNtsc, FrameRates::k30,
};
constexpr FormatRuleRow kRules[] = {VideoRate(kVideo, kRates)};

constexpr SettingRow kSettings[] = {
    kNoGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Video, .codecs = kVideo, .defaultCodec = IFormatCodecVideo::CODEC_ID_GIF},
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_GIF,
    .settings = kSettings,
    .limits = {.video = 1, .audio = 0, .subtitle = 0, .other = 0},
    .streams = kStreams,
    .rules = kRules,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatGif::DataHelperFormatGif() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
