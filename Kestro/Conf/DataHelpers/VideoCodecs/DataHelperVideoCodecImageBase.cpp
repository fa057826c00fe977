#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecImageBase.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {

namespace {

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecVideo::CODEC_ID_PNG,
    .stream = StreamType::Video,
    .settings = kPlainVideoOfQuality,
    .frameRates = kAnyFrameRate,
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperVideoCodecImageBase::DataHelperVideoCodecImageBase(const std::string& codecId)
    : DataHelperCodecFFMPEG(kSheet, codecId) {}

DataHelperVideoCodecImageBase::DataHelperVideoCodecImageBase(const CodecSheet& sheet) : DataHelperCodecFFMPEG(sheet) {}

}  // namespace Kestro::Conf
