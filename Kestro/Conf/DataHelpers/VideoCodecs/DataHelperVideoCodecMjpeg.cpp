#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecMjpeg.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {

namespace {

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecVideo::CODEC_ID_MJPEG,
    .stream = StreamType::Video,
    .settings = {kVbrOrCbrMode, kVideoBitrate, kVideoQuality},
    .frameRates = kAnyFrameRate,
    .hasBFrames = false,
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperVideoCodecMjpeg::DataHelperVideoCodecMjpeg() : DataHelperVideoCodecImageBase(kSheet) {}

}  // namespace Kestro::Conf
