#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecUTVideo.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {

namespace {

constexpr SettingRow kSettings[] = {
    kCbrMode,
    kGlobalHeader,
};
constexpr CodecSheet kSheet{
    .codecId = IFormatCodecVideo::CODEC_ID_UTVIDEO,
    .stream = StreamType::Video,
    .settings = kSettings,
    .frameRates = kAnyFrameRate,
    .bitrateIsOptional = true,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperVideoCodecUTVideo::DataHelperVideoCodecUTVideo() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
