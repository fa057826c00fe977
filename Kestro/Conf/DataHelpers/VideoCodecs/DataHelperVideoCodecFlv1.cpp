#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecFlv1.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {

namespace {

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecVideo::CODEC_ID_FLV1,
    .stream = StreamType::Video,
    .settings = kPlainVideo,
    .frameRates = kAnyFrameRate,
    .hasBFrames = false,
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperVideoCodecFlv1::DataHelperVideoCodecFlv1() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
