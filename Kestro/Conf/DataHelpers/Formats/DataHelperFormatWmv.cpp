#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatWmv.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet kSheet{
    .container = IFormatFile::FORMAT_WMV,
    .globalHeader = true,
    .limits = {.video = 16, .audio = 16, .subtitle = 16, .other = 16},
    .streams = {{.type = StreamType::Video,
                 .codecs = {IFormatCodecVideo::CODEC_ID_WMV2},
                 .defaultCodec = IFormatCodecVideo::CODEC_ID_WMV2},
                {.type = StreamType::Audio,
                 .codecs = {IFormatCodecAudio::CODEC_ID_WMAV2},
                 .defaultCodec = IFormatCodecAudio::CODEC_ID_WMAV2}},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperFormatWmv::DataHelperFormatWmv(const std::string& container) : DataHelperFormatBase(kSheet, container) {}

}  // namespace Kestro::Conf
