#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatAu.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr int64_t kSampleRates[] = {8'000, 8'192};

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_AU,
    .limits = {.audio = 2, .other = 16},
    .streams = {{.type = StreamType::Audio,
                 .codecs = {IFormatCodecAudio::CODEC_ID_PCM_S16BE},
                 .defaultCodec = IFormatCodecAudio::CODEC_ID_PCM_S16BE}},
    .rules = {AudioRate(kSampleRates)},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatAu::DataHelperFormatAu() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
