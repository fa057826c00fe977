#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecAV1.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {

namespace {

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecVideo::CODEC_ID_AV1,
    .stream = StreamType::Video,
    .settings = {kCbrOrVbrMode, kVideoBitrate, kVideoQuality},
    .globalHeader = true,
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperVideoCodecAV1::DataHelperVideoCodecAV1() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
