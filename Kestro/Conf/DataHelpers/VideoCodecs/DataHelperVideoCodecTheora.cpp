#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecTheora.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {

namespace {

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecVideo::CODEC_ID_THEORA,
    .stream = StreamType::Video,
    .settings = {kCbrOrVbrMode,
                 kVideoBitrate,
                 {.tag = IFormatCodec::TAG_QUALITY, .initial = 1, .allowed = Shared{QualityRange}}},
    .globalHeader = true,
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperVideoCodecTheora::DataHelperVideoCodecTheora() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
