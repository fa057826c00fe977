#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecMjpeg.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {

namespace {

constexpr SettingRow kSettings[] = {
    kVbrOrCbrMode,
    kVideoBitrate,
    kVideoQuality,
};
constexpr CodecSheet kSheet{
    .codecId = IFormatCodecVideo::CODEC_ID_MJPEG,
    .stream = StreamType::Video,
    .settings = kSettings,
    .frameRates = kAnyFrameRate,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperVideoCodecMjpeg::DataHelperVideoCodecMjpeg() : DataHelperVideoCodecImageBase(kSheet) {}

}  // namespace Kestro::Conf
