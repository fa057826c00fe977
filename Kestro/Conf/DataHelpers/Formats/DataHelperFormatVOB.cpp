#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatVOB.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_VOB,
    .limits = kOneVideoAndMany,
    .streams = {kMpegVideoStream,
                {.type = StreamType::Audio,
                 .codecs = {IFormatCodecAudio::CODEC_ID_MP2, IFormatCodecAudio::CODEC_ID_AC3},
                 .defaultCodec = IFormatCodecAudio::CODEC_ID_MP2}},
    .rules = {VideoRate(FrameRates::kMpegAnd20, kMpegVideo)},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatVOB::DataHelperFormatVOB(const std::string& container) : DataHelperFormatBase(kSheet, container) {}

}  // namespace Kestro::Conf
