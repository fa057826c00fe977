#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatGif.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_GIF,
    .limits = {.video = 1},
    .streams = {{.type = StreamType::Video,
                 .codecs = {IFormatCodecVideo::CODEC_ID_GIF},
                 .defaultCodec = IFormatCodecVideo::CODEC_ID_GIF}},
    .rules = {VideoRate(FrameRates::kUpTo30, {IFormatCodecVideo::CODEC_ID_GIF})},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatGif::DataHelperFormatGif() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
