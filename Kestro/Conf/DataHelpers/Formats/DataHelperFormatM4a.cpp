#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatM4a.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_M4A,
    .globalHeader = true,
    .limits = {.video = 1, .audio = 1, .other = 1},
    .streams = {{.type = StreamType::Audio,
                 .codecs = {IFormatCodecAudio::CODEC_ID_AAC, IFormatCodecAudio::CODEC_ID_ALAC},
                 .defaultCodec = IFormatCodecAudio::CODEC_ID_AAC},
                kCover},
    .rules = {kCoverRule},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatM4a::DataHelperFormatM4a(const std::string& container) : DataHelperFormatBase(kSheet, container) {}

}  // namespace Kestro::Conf
