#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatAu.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_PCM_S16BE};
constexpr int64_t kSampleRates[] = {8'000, 8'192};
constexpr FormatRuleRow kRules[] = {AudioRate(kSampleRates)};

constexpr SettingRow kSettings[] = {
    kNoGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Audio, .codecs = kAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_PCM_S16BE},
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_AU,
    .settings = kSettings,
    .limits = {.video = 0, .audio = 2, .subtitle = 0, .other = 16},
    .streams = kStreams,
    .rules = kRules,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatAu::DataHelperFormatAu() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
