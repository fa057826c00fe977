#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMpeg1.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr Text kVideo[] = {IFormatCodecVideo::CODEC_ID_MPEG1VIDEO};
constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_MP2, IFormatCodecAudio::CODEC_ID_MP3};
constexpr FormatRuleRow kRules[] = {VideoRate(kVideo, FrameRates::kMpeg)};

constexpr SettingRow kSettings[] = {
    kNoGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Video, .codecs = kVideo, .defaultCodec = IFormatCodecVideo::CODEC_ID_MPEG1VIDEO},
    {.type = StreamType::Audio, .codecs = kAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_MP2},
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_MPEG,
    .settings = kSettings,
    .limits = kOneVideoAndMany,
    .streams = kStreams,
    .rules = kRules,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatMpeg1::DataHelperFormatMpeg1(const std::string& container) : DataHelperFormatBase(kSheet, container) {}

}  // namespace Kestro::Conf
