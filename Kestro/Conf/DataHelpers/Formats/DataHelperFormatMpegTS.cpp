#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMpegTS.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr SettingRow kSettings[] = {
    kNoGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    kTransportVideoStream,
    TransportAudioStream(IFormatCodecAudio::CODEC_ID_MP2),
    kTransportSubtitleStream,
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_MPEGTS,
    .settings = kSettings,
    .limits = kOneVideoAndMany,
    .streams = kStreams,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatMpegTS::DataHelperFormatMpegTS() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
