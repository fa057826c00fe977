#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecRLE.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {

namespace {

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecVideo::CODEC_ID_QTRLE,
    .stream = StreamType::Video,
    .settings = kPlainVideo,
    .frameRates = kAnyFrameRate,
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperVideoCodecRLE::DataHelperVideoCodecRLE() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
