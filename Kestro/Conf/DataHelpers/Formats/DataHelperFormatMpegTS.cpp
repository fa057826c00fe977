#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMpegTS.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_MPEGTS,
    .limits = kOneVideoAndMany,
    .streams = {kTransportVideoStream, TransportAudioStream(IFormatCodecAudio::CODEC_ID_MP2), kTransportSubtitleStream},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatMpegTS::DataHelperFormatMpegTS() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
