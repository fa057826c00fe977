#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMpeg2TS.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr SettingRow kSettings[] = {
    kNoGlobalHeader,
};
constexpr StreamRow kStreams[] = {
    kTransportVideoStream,
    TransportAudioStream(IFormatCodecAudio::CODEC_ID_AAC),
    kTransportSubtitleStream,
};
constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_MPEG2TS,
    .settings = kSettings,
    .limits = kOneVideoAndMany,
    .streams = kStreams,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperFormatMpeg2TS::DataHelperFormatMpeg2TS() : DataHelperFormatBase(kSheet) {}

}  // namespace Kestro::Conf
