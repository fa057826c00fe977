#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecProres.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {

namespace {

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecVideo::CODEC_ID_PRORES,
    .stream = StreamType::Video,
    .settings = kPlainVideo,
    .frameRates = kAnyFrameRate,
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperVideoCodecProres::DataHelperVideoCodecProres() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
