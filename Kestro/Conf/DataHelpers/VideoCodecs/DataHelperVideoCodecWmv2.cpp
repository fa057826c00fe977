#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecWmv2.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {

namespace {

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecVideo::CODEC_ID_WMV2,
    .stream = StreamType::Video,
    .settings = kPlainVideo,
    .globalHeader = true,
    .hasBFrames = false,
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperVideoCodecWmv2::DataHelperVideoCodecWmv2() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
