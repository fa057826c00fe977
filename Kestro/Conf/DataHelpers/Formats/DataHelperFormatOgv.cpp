#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatOgv.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr Text kVideo[] = {IFormatCodecVideo::CODEC_ID_THEORA};
constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_FLAC, IFormatCodecAudio::CODEC_ID_VORBIS};

constexpr SettingRow kSettings[] = {
    kNoGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Video, .codecs = kVideo, .defaultCodec = IFormatCodecVideo::CODEC_ID_THEORA},
    {.type = StreamType::Audio, .codecs = kAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_VORBIS},
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_OGV,
    .settings = kSettings,
    .limits = {.video = 1, .audio = 1, .subtitle = 1, .other = 16},
    .streams = kStreams,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatOgv::DataHelperFormatOgv() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
