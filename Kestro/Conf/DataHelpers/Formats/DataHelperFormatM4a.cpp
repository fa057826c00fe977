#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatM4a.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_AAC, IFormatCodecAudio::CODEC_ID_ALAC};

constexpr SettingRow kSettings[] = {
    kGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Audio, .codecs = kAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_AAC},
    kCover,
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_M4A,
    .settings = kSettings,
    .limits = {.video = 1, .audio = 1, .subtitle = 0, .other = 1},
    .streams = kStreams,
    .rules = kCoverRules,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatM4a::DataHelperFormatM4a(const std::string& container) : DataHelperFormatBase(kSheet, container) {}

}  // namespace Kestro::Conf
