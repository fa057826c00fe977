#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecH263.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {

namespace {

// Sub-QCIF to 16CIF (ITU-T H.263, table 1).
constexpr FrameSize kSizes[] = {{128, 96}, {176, 144}, {352, 288}, {704, 576}, {1408, 1152}};

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecVideo::CODEC_ID_H263,
    .stream = StreamType::Video,
    .settings = kPlainVideoOfQuality,
    .frameSizes = FrameSizes{kSizes},
    .frameRates = kAnyFrameRate,
    .hasBFrames = false,
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperVideoCodecH263::DataHelperVideoCodecH263() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
