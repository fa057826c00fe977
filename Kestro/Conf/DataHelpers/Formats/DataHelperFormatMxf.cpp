#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMxf.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr Text kVideo[] = {IFormatCodecVideo::CODEC_ID_H264, IFormatCodecVideo::CODEC_ID_MPEG2VIDEO};
constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_PCM_S16LE};
constexpr Text kH264[] = {IFormatCodecVideo::CODEC_ID_H264};
constexpr Text kProfiles[] = {IFormatCodecVideo::TAG_X264_PROFILE_BASELINE};
constexpr int64_t kSampleRates[] = {48'000};
constexpr FormatRuleRow kRules[] = {
    AudioRate(kSampleRates),
    VideoRate({}, FrameRates::kMpeg),
    {.type = StreamType::Video,
     .codecs = kH264,
     .tag = IFormatCodec::TAG_PROFILE,
     .node = Node::Options,
     .allowed = Texts{kProfiles}},
};

constexpr SettingRow kSettings[] = {
    kNoGlobalHeader,
    kNotForPsp,
    {.tag = IFormatFile::TAG_PROGRESSIVE_READ, .initial = true},
};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Video, .codecs = kVideo, .defaultCodec = IFormatCodecVideo::CODEC_ID_MPEG2VIDEO},
    {.type = StreamType::Audio, .codecs = kAudio, .defaultCodec = IFormatCodecAudio::CODEC_ID_PCM_S16LE},
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_MXF,
    .settings = kSettings,
    .limits = {.video = 1, .audio = 8, .subtitle = 16, .other = 16},
    .streams = kStreams,
    .rules = kRules,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatMxf::DataHelperFormatMxf() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
