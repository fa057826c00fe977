#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMp4.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"

namespace Kestro::Conf {

namespace {

constexpr FormatSheet Sheet(const Codecs& video, const Codecs& audio) {
    return {
        .container = IFormatFile::FORMAT_MP4,
        .globalHeader = true,
        .settings = {kNotForPsp, kNotProgressive},
        .limits = kOneVideoAndMany,
        .streams = {{.type = StreamType::Video, .codecs = video, .defaultCodec = IFormatCodecVideo::CODEC_ID_H264},
                    {.type = StreamType::Audio, .codecs = audio, .defaultCodec = IFormatCodecAudio::CODEC_ID_AAC},
                    {.type = StreamType::Subtitle,
                     .codecs = {IFormatCodecSubtitle::CODEC_ID_DVD_SUBTITLE, IFormatCodecSubtitle::CODEC_ID_MOV_TEXT},
                     .defaultCodec = IFormatCodecSubtitle::CODEC_ID_DVD_SUBTITLE}},
        .rules = {AudioRate(kMp4Mp3SampleRates, {IFormatCodecAudio::CODEC_ID_MP3})},
    };
}
constexpr FormatSheet kSheet =
    Sheet({IFormatCodecVideo::CODEC_ID_H264, IFormatCodecVideo::CODEC_ID_MPEG4},
          {IFormatCodecAudio::CODEC_ID_AAC, IFormatCodecAudio::CODEC_ID_AC3, IFormatCodecAudio::CODEC_ID_MP3});
constexpr FormatSheet kSheetWithH265AndDts =
    Sheet({IFormatCodecVideo::CODEC_ID_H264, IFormatCodecVideo::CODEC_ID_MPEG4, IFormatCodecVideo::CODEC_ID_H265},
          {IFormatCodecAudio::CODEC_ID_AAC, IFormatCodecAudio::CODEC_ID_AC3, IFormatCodecAudio::CODEC_ID_DTS,
           IFormatCodecAudio::CODEC_ID_MP3});
static_assert(IsConsistent(kSheet) && IsConsistent(kSheetWithH265AndDts));

}  // namespace

DataHelperFormatMp4::DataHelperFormatMp4(const std::string& container, bool takesH265AndDts)
    : DataHelperFormatBase(takesH265AndDts ? kSheetWithH265AndDts : kSheet, container) {}

}  // namespace Kestro::Conf
