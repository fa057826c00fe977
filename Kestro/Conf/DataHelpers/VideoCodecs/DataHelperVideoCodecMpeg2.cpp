#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecMpeg2.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {

namespace {

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecVideo::CODEC_ID_MPEG2VIDEO,
    .stream = StreamType::Video,
    .settings = {kCbrOrVbrMode,
                 kVideoBitrate,
                 {.tag = IFormatCodecVideo::TAG_MAX_I_FRAME_INTERVAL, .initial = 15},
                 {.tag = IFormatCodecVideo::TAG_MAX_B_FRAME_SEQUENCE, .initial = 2},
                 kVideoQuality},
    .globalHeader = true,
    .widths = kMpegWidths,
    .heights = kMpegHeights,
    .frameRates = Rates{FrameRates::kMpeg},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperVideoCodecMpeg2::DataHelperVideoCodecMpeg2() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
