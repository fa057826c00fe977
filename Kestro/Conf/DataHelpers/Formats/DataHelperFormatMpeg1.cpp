#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMpeg1.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_MPEG,
    .limits = kOneVideoAndMany,
    .streams = {{.type = StreamType::Video,
                 .codecs = {IFormatCodecVideo::CODEC_ID_MPEG1VIDEO},
                 .defaultCodec = IFormatCodecVideo::CODEC_ID_MPEG1VIDEO},
                {.type = StreamType::Audio,
                 .codecs = {IFormatCodecAudio::CODEC_ID_MP2, IFormatCodecAudio::CODEC_ID_MP3},
                 .defaultCodec = IFormatCodecAudio::CODEC_ID_MP2}},
    .rules = {VideoRate(FrameRates::kMpeg, {IFormatCodecVideo::CODEC_ID_MPEG1VIDEO})},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatMpeg1::DataHelperFormatMpeg1(const std::string& container) : DataHelperFormatBase(kSheet, container) {}

}  // namespace Kestro::Conf
