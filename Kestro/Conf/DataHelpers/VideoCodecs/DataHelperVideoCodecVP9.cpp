#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecVP9.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {

namespace {

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecVideo::CODEC_ID_VP9,
    .stream = StreamType::Video,
    .settings = {kVbrMode, kVideoBitrate, kVideoQuality},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperVideoCodecVP9::DataHelperVideoCodecVP9() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
