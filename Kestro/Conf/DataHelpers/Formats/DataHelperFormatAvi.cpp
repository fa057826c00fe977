#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatAvi.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"
#include "Kestro/Conf/DataHelpers/LayoutNames.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_AVI,
    .limits = {.video = 1, .audio = 16, .subtitle = 16},
    .streams = {{.type = StreamType::Video,
                 .codecs = {IFormatCodecVideo::CODEC_ID_H264, IFormatCodecVideo::CODEC_ID_MPEG1VIDEO,
                            IFormatCodecVideo::CODEC_ID_MPEG2VIDEO, IFormatCodecVideo::CODEC_ID_MPEG4,
                            IFormatCodecVideo::CODEC_ID_MJPEG},
                 .defaultCodec = IFormatCodecVideo::CODEC_ID_H264},
                {.type = StreamType::Audio,
                 .codecs = {IFormatCodecAudio::CODEC_ID_AAC, IFormatCodecAudio::CODEC_ID_MP3,
                            IFormatCodecAudio::CODEC_ID_MP2, IFormatCodecAudio::CODEC_ID_PCM_S16LE},
                 .defaultCodec = IFormatCodecAudio::CODEC_ID_MP3},
                {.type = StreamType::Subtitle,
                 .codecs = {IFormatCodecSubtitle::CODEC_ID_XSUB},
                 .defaultCodec = IFormatCodecSubtitle::CODEC_ID_XSUB}},
    .rules = {{.type = StreamType::Audio,
               .codecs = {IFormatCodecAudio::CODEC_ID_AAC},
               .tag = IFormatCodecAudio::TAG_LAYOUT,
               .node = Node::Resampler,
               .allowed = Texts{kMonoAndStereoNames}}},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatAvi::DataHelperFormatAvi() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
