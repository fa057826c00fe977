#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecMpeg1.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {

namespace {

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecVideo::CODEC_ID_MPEG1VIDEO,
    .stream = StreamType::Video,
    .settings = kPlainVideo,
    .globalHeader = true,
    .widths = kMpegWidths,
    .heights = kMpegHeights,
    .frameRates = Rates{FrameRates::kMpeg},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperVideoCodecMpeg1::DataHelperVideoCodecMpeg1() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
