#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatFlv.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_FLV,
    .globalHeader = true,
    .settings = {kNotForPsp, kNotProgressive},
    .limits = {.video = 1, .audio = 1},
    .streams = {{.type = StreamType::Video,
                 .codecs = {IFormatCodecVideo::CODEC_ID_FLV1, IFormatCodecVideo::CODEC_ID_H264},
                 .defaultCodec = IFormatCodecVideo::CODEC_ID_FLV1},
                {.type = StreamType::Audio,
                 .codecs = {IFormatCodecAudio::CODEC_ID_MP3, IFormatCodecAudio::CODEC_ID_AAC},
                 .defaultCodec = IFormatCodecAudio::CODEC_ID_AAC},
                {.type = StreamType::Subtitle,
                 .codecs = {IFormatCodecSubtitle::CODEC_ID_TEXT},
                 .defaultCodec = IFormatCodecSubtitle::CODEC_ID_TEXT}},
    .rules = {AudioRate(kFlashSampleRates)},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatFlv::DataHelperFormatFlv() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
