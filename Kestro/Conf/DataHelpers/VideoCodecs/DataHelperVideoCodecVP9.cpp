#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecVP9.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {

namespace {

constexpr SettingRow kSettings[] = {
    kVbrMode,
    kVideoBitrate,
    kVideoQuality,
};
constexpr CodecSheet kSheet{
    .codecId = IFormatCodecVideo::CODEC_ID_VP9,
    .stream = StreamType::Video,
    .settings = kSettings,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperVideoCodecVP9::DataHelperVideoCodecVP9() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
