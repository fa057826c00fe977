#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatVOB.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_MP2, IFormatCodecAudio::CODEC_ID_AC3};
constexpr FrameRate kRates[] = {
    FrameRates::k20, FrameRates::kNtscFilm, FrameRates::kFilm,      FrameRates::kPal, FrameRates::kNtsc,
    FrameRates::k30, FrameRates::k50,       FrameRates::kNtscField, FrameRates::k60,
};
constexpr FormatRuleRow kRules[] = {VideoRate(kMpegVideo, kRates)};

constexpr SettingRow kSettings[] = {
    kNoGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    kMpegVideoStream,
    {.type = StreamType::Audio, .codecs = kAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_MP2},
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_VOB,
    .settings = kSettings,
    .limits = kOneVideoAndMany,
    .streams = kStreams,
    .rules = kRules,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatVOB::DataHelperFormatVOB(const std::string& container) : DataHelperFormatBase(kSheet, container) {}

}  // namespace Kestro::Conf
