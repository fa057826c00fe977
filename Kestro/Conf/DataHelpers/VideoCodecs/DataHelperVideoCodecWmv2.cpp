#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecWmv2.h"

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
    .codecId = IFormatCodecVideo::CODEC_ID_WMV2,
    .stream = StreamType::Video,
    .settings = kSettings,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperVideoCodecWmv2::DataHelperVideoCodecWmv2() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
