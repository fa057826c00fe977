#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecVP8.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {

namespace {

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecVideo::CODEC_ID_VP8,
    .stream = StreamType::Video,
    .settings = kPlainVideo,
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperVideoCodecVP8::DataHelperVideoCodecVP8() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
