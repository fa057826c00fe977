#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatF4a.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_F4A,
    .globalHeader = true,
    .settings = {kNotForPsp, kNotProgressive},
    .limits = {.audio = 1},
    .streams = {{.type = StreamType::Audio,
                 .codecs = {IFormatCodecAudio::CODEC_ID_MP3, IFormatCodecAudio::CODEC_ID_AAC},
                 .defaultCodec = IFormatCodecAudio::CODEC_ID_AAC}},
    .rules = {AudioRate(kFlashSampleRates)},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatF4a::DataHelperFormatF4a() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
