#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMxf.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr Text kProfiles[] = {IFormatCodecVideo::TAG_X264_PROFILE_BASELINE};

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_MXF,
    .settings = {kNotForPsp, {.tag = IFormatFile::TAG_PROGRESSIVE_READ, .initial = true}},
    .limits = {.video = 1, .audio = 8, .subtitle = 16, .other = 16},
    .streams = {{.type = StreamType::Video,
                 .codecs = {IFormatCodecVideo::CODEC_ID_H264, IFormatCodecVideo::CODEC_ID_MPEG2VIDEO},
                 .defaultCodec = IFormatCodecVideo::CODEC_ID_MPEG2VIDEO},
                {.type = StreamType::Audio,
                 .codecs = {IFormatCodecAudio::CODEC_ID_PCM_S16LE},
                 .defaultCodec = IFormatCodecAudio::CODEC_ID_PCM_S16LE}},
    .rules = {AudioRate(k48kHz),
              VideoRate(FrameRates::kMpeg),
              {.type = StreamType::Video,
               .codecs = {IFormatCodecVideo::CODEC_ID_H264},
               .tag = IFormatCodec::TAG_PROFILE,
               .node = Node::Options,
               .allowed = Texts{kProfiles}}},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatMxf::DataHelperFormatMxf() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
