#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecMpeg1.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {

namespace {

constexpr SettingRow kSettings[] = {
    kCbrOrVbrMode,
    kVideoBitrate,
    kOptionalVideoQuality,
    kGlobalHeader,
};
constexpr CodecSheet kSheet{
    .codecId = IFormatCodecVideo::CODEC_ID_MPEG1VIDEO,
    .stream = StreamType::Video,
    .settings = kSettings,
    .widths = kMpegWidths,
    .heights = kMpegHeights,
    .frameRates = Rates{FrameRates::kMpeg},
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperVideoCodecMpeg1::DataHelperVideoCodecMpeg1() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
