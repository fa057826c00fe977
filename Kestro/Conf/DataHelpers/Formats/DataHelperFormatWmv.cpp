#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatWmv.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr Text kVideo[] = {IFormatCodecVideo::CODEC_ID_WMV2};
constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_WMAV2};

constexpr SettingRow kSettings[] = {
    kGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Video, .codecs = kVideo, .defaultCodec = IFormatCodecVideo::CODEC_ID_WMV2},
    {.type = StreamType::Audio, .codecs = kAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_WMAV2},
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_WMV,
    .settings = kSettings,
    .limits = {.video = 16, .audio = 16, .subtitle = 16, .other = 16},
    .streams = kStreams,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatWmv::DataHelperFormatWmv(const std::string& container) : DataHelperFormatBase(kSheet, container) {}

}  // namespace Kestro::Conf
