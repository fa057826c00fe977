#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatAvi.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"

namespace Kestro::Conf {

namespace {

constexpr Text kVideo[] = {IFormatCodecVideo::CODEC_ID_H264, IFormatCodecVideo::CODEC_ID_MPEG1VIDEO,
                           IFormatCodecVideo::CODEC_ID_MPEG2VIDEO, IFormatCodecVideo::CODEC_ID_MPEG4,
                           IFormatCodecVideo::CODEC_ID_MJPEG};
constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_AAC, IFormatCodecAudio::CODEC_ID_MP3,
                           IFormatCodecAudio::CODEC_ID_MP2, IFormatCodecAudio::CODEC_ID_PCM_S16LE};
constexpr Text kSubtitles[] = {IFormatCodecSubtitle::CODEC_ID_XSUB};
constexpr Text kAac[] = {IFormatCodecAudio::CODEC_ID_AAC};
constexpr Text kLayouts[] = {IFormatCodecAudio::TAG_CH_LAYOUT_MONO, IFormatCodecAudio::TAG_CH_LAYOUT_STEREO};
constexpr FormatRuleRow kRules[] = {
    {.type = StreamType::Audio,
     .codecs = kAac,
     .tag = IFormatCodecAudio::TAG_LAYOUT,
     .node = Node::Resampler,
     .allowed = Texts{kLayouts}},
};

constexpr SettingRow kSettings[] = {
    kNoGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Video, .codecs = kVideo, .defaultCodec = IFormatCodecVideo::CODEC_ID_H264},
    {.type = StreamType::Audio, .codecs = kAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_MP3},
    {.type = StreamType::Subtitle, .codecs = kSubtitles, .defaultCodec = IFormatCodecSubtitle::CODEC_ID_XSUB},
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_AVI,
    .settings = kSettings,
    .limits = {.video = 1, .audio = 16, .subtitle = 16, .other = 0},
    .streams = kStreams,
    .rules = kRules,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatAvi::DataHelperFormatAvi() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
