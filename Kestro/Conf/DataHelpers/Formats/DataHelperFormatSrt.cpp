#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatSrt.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_SRT,
    .limits = {.subtitle = 1},
    .streams = {{.type = StreamType::Subtitle,
                 .codecs = {IFormatCodecSubtitle::CODEC_ID_SRT, IFormatCodecSubtitle::CODEC_ID_SUBRIP},
                 .defaultCodec = IFormatCodecSubtitle::CODEC_ID_SRT}},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatSrt::DataHelperFormatSrt() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
