#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatWebm.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr Text kVideo[] = {IFormatCodecVideo::CODEC_ID_VP8, IFormatCodecVideo::CODEC_ID_VP9};
constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_VORBIS};

constexpr SettingRow kSettings[] = {
    kGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Video, .codecs = kVideo, .defaultCodec = IFormatCodecVideo::CODEC_ID_VP8},
    {.type = StreamType::Audio, .codecs = kAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_VORBIS},
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_WEBM,
    .settings = kSettings,
    .limits = kOneVideoAndMany,
    .streams = kStreams,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatWebm::DataHelperFormatWebm() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
