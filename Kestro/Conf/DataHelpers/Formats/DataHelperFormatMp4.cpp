#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMp4.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"

namespace Kestro::Conf {

namespace {

constexpr Text kAllVideo[] = {IFormatCodecVideo::CODEC_ID_H264, IFormatCodecVideo::CODEC_ID_MPEG4,
                              IFormatCodecVideo::CODEC_ID_H265};
constexpr std::span<const Text> kVideo = std::span(kAllVideo).first(2);
constexpr Text kAllAudio[] = {IFormatCodecAudio::CODEC_ID_AAC, IFormatCodecAudio::CODEC_ID_AC3,
                              IFormatCodecAudio::CODEC_ID_DTS, IFormatCodecAudio::CODEC_ID_MP3};
constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_AAC, IFormatCodecAudio::CODEC_ID_AC3,
                           IFormatCodecAudio::CODEC_ID_MP3};
constexpr Text kSubtitles[] = {IFormatCodecSubtitle::CODEC_ID_DVD_SUBTITLE, IFormatCodecSubtitle::CODEC_ID_MOV_TEXT};
constexpr Text kMp3[] = {IFormatCodecAudio::CODEC_ID_MP3};
constexpr int64_t kMp3SampleRates[] = {44'100, 48'000, 32'000, 22'050, 24'000, 16'000};

constexpr SettingRow kSettings[] = {
    kGlobalHeader,
    kNotForPsp,
    kNotProgressive,
};
constexpr FormatRuleRow kRules[] = {
    {.type = StreamType::Audio,
     .codecs = kMp3,
     .tag = IFormatCodecAudio::TAG_SAMPLE_RATE,
     .node = Node::Resampler,
     .allowed = Integers{kMp3SampleRates}},
};

/// The streams with those codecs.
struct Streams {
    StreamRow rows[3];
    constexpr Streams(std::span<const Text> video, std::span<const Text> audio)
        : rows{
              {.type = StreamType::Video, .codecs = video, .defaultCodec = IFormatCodecVideo::CODEC_ID_H264},
              {.type = StreamType::Audio, .codecs = audio, .defaultCodec = IFormatCodecAudio::CODEC_ID_AAC},
              {.type = StreamType::Subtitle,
               .codecs = kSubtitles,
               .defaultCodec = IFormatCodecSubtitle::CODEC_ID_DVD_SUBTITLE},
          } {}
};
constexpr Streams kStreams(kVideo, kAudio);
constexpr Streams kAllStreams(kAllVideo, kAllAudio);

constexpr FormatSheet Sheet(const Streams& streams) {
    return {
        .container = IFormatFile::FORMAT_MP4,
        .settings = kSettings,
        .limits = kOneVideoAndMany,
        .streams = streams.rows,
        .rules = kRules,
    };
}
constexpr FormatSheet kSheet = Sheet(kStreams);
constexpr FormatSheet kAllSheet = Sheet(kAllStreams);
static_assert(IsSound(kSheet) && IsSound(kAllSheet));

}  // namespace

DataHelperFormatMp4::DataHelperFormatMp4(const std::string& container, bool takesH265AndDts)
    : DataHelperFormatBase(takesH265AndDts ? kAllSheet : kSheet, container) {}

}  // namespace Kestro::Conf
