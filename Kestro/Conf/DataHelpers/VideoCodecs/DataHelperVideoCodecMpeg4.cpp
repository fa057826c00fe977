#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecMpeg4.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {

namespace {

constexpr Text kProfiles[] = {
    IFormatCodecVideo::TAG_MPEG4_PROFILE_SIMPLE,
    IFormatCodecVideo::TAG_MPEG4_PROFILE_MAIN,
    IFormatCodecVideo::TAG_MPEG4_PROFILE_CORE_SCALABLE,
    IFormatCodecVideo::TAG_MPEG4_PROFILE_ADVANCED_SIMPLE,
};

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecVideo::CODEC_ID_MPEG4,
    .stream = StreamType::Video,
    .settings = {kCbrOrVbrMode,
                 kVideoBitrate,
                 {.tag = IFormatCodec::TAG_PROFILE,
                  .node = Node::Options,
                  .initial = IFormatCodecVideo::TAG_MPEG4_PROFILE_SIMPLE,
                  .allowed = Texts{kProfiles}},
                 kOptionalVideoQuality},
    .globalHeader = true,
    .frameRates = kAnyFrameRate,
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperVideoCodecMpeg4::DataHelperVideoCodecMpeg4() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
