#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatWav.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_WAV,
    .limits = {.audio = 1, .other = 16},
    .streams = {{.type = StreamType::Audio,
                 .codecs = {IFormatCodecAudio::CODEC_ID_PCM_S16LE},
                 .defaultCodec = IFormatCodecAudio::CODEC_ID_PCM_S16LE}},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatWav::DataHelperFormatWav(const std::string& container) : DataHelperFormatBase(kSheet, container) {}

}  // namespace Kestro::Conf
