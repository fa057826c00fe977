#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormat3gp.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr Text kVideo[] = {IFormatCodecVideo::CODEC_ID_H263, IFormatCodecVideo::CODEC_ID_H264,
                           IFormatCodecVideo::CODEC_ID_MPEG4};
constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_AAC};

constexpr SettingRow kSettings[] = {
    kGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Video, .codecs = kVideo, .defaultCodec = IFormatCodecVideo::CODEC_ID_H263},
    {.type = StreamType::Audio, .codecs = kAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_AAC},
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_3GP,
    .settings = kSettings,
    .limits = {.video = 1, .audio = 1, .subtitle = 0, .other = 0},
    .streams = kStreams,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormat3gp::DataHelperFormat3gp(const std::string& container) : DataHelperFormatBase(kSheet, container) {}

}  // namespace Kestro::Conf
