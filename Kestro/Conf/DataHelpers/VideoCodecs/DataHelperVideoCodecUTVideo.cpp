#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecUTVideo.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {

namespace {

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecVideo::CODEC_ID_UTVIDEO,
    .stream = StreamType::Video,
    .settings = {kCbrMode, {.tag = IFormatCodec::TAG_BITRATE, .initial = 2'000'000}},
    .globalHeader = true,
    .frameRates = kAnyFrameRate,
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperVideoCodecUTVideo::DataHelperVideoCodecUTVideo() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
