#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMpeg2TS.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_MPEG2TS,
    .limits = kOneVideoAndMany,
    .streams = {kTransportVideoStream, TransportAudioStream(IFormatCodecAudio::CODEC_ID_AAC), kTransportSubtitleStream},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatMpeg2TS::DataHelperFormatMpeg2TS() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
