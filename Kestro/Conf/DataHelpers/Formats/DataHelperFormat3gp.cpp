#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormat3gp.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_3GP,
    .globalHeader = true,
    .limits = {.video = 1, .audio = 1},
    .streams = {{.type = StreamType::Video,
                 .codecs = {IFormatCodecVideo::CODEC_ID_H263, IFormatCodecVideo::CODEC_ID_H264,
                            IFormatCodecVideo::CODEC_ID_MPEG4},
                 .defaultCodec = IFormatCodecVideo::CODEC_ID_H263},
                {.type = StreamType::Audio,
                 .codecs = {IFormatCodecAudio::CODEC_ID_AAC},
                 .defaultCodec = IFormatCodecAudio::CODEC_ID_AAC}},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormat3gp::DataHelperFormat3gp(const std::string& container) : DataHelperFormatBase(kSheet, container) {}

}  // namespace Kestro::Conf
