#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecWmv3.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {

namespace {

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecVideo::CODEC_ID_WMV3,
    .stream = StreamType::Video,
    .settings = kPlainVideo,
    .globalHeader = true,
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperVideoCodecWmv3::DataHelperVideoCodecWmv3() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
