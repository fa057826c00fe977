#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatSwf.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_SWF,
    .limits = {.video = 1, .audio = 1},
    .streams = {{.type = StreamType::Video,
                 .codecs = {IFormatCodecVideo::CODEC_ID_FLV1, IFormatCodecVideo::CODEC_ID_MJPEG},
                 .defaultCodec = IFormatCodecVideo::CODEC_ID_MJPEG},
                {.type = StreamType::Audio,
                 .codecs = {IFormatCodecAudio::CODEC_ID_MP3},
                 .defaultCodec = IFormatCodecAudio::CODEC_ID_MP3}},
    .rules = {AudioRate(kFlashSampleRates)},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatSwf::DataHelperFormatSwf() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
