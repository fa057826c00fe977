#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatDVD.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"
#include "Kestro/Conf/DataHelpers/SharedRanges.h"

namespace Kestro::Conf {

namespace {

constexpr Text kMpeg1[] = {IFormatCodecVideo::CODEC_ID_MPEG1VIDEO};
constexpr Text kMpeg2[] = {IFormatCodecVideo::CODEC_ID_MPEG2VIDEO};
constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_MP2, IFormatCodecAudio::CODEC_ID_AC3};
constexpr std::span<const Text> kMp2 = std::span(kAudio).first(1);
constexpr Text kHeldToTheDisc[] = {IFormatCodecAudio::CODEC_ID_AC3, IFormatCodecAudio::CODEC_ID_MP2};
constexpr Text kStandards[] = {IFormatFile::DVD_STANDARD_NTSC, IFormatFile::DVD_STANDARD_PAL};
constexpr NamedInteger kDisks[] = {
    {IFormatFile::DISK_TYPE_DVD_MINI, IFormatFile::DISK_SIZE_DVD_MINI},
    {IFormatFile::DISK_TYPE_DVD_STANDARD, IFormatFile::DISK_SIZE_DVD_STANDARD},
    {IFormatFile::DISK_TYPE_DVD_DOUBLE_LAYER, IFormatFile::DISK_SIZE_DVD_DOUBLE_LAYER},
};
constexpr Text kVideoModes[] = {IFormatCodec::TAG_BITRATE_MODE_CBR_AUTO, IFormatCodec::TAG_BITRATE_MODE_CBR};
constexpr Text kAudioModes[] = {IFormatCodec::TAG_BITRATE_MODE_CBR};
constexpr int64_t kAudioBitrates[] = {256'000};
constexpr int64_t kSampleRates[] = {48'000};

constexpr SettingRow kSettings[] = {
    kNoGlobalHeader,
    {.tag = IFormatFile::TAG_DVD_STANDARD, .initial = IFormatFile::DVD_STANDARD_NTSC, .allowed = Texts{kStandards}},
    {.tag = IFormatFile::TAG_DISK_SIZE,
     .initial = IFormatFile::DISK_SIZE_DVD_STANDARD,
     .allowed = NamedIntegers{kDisks}},
    {.tag = IFormatCodec::TAG_BITRATE_MODE, .node = Node::FirstVideo, .allowed = Texts{kVideoModes}},
    {.tag = IFormatCodec::TAG_BITRATE, .node = Node::FirstVideo, .allowed = Shared{VideoBitrateRange}},
};
constexpr FormatRuleRow OwnRule(StreamType type, std::span<const Text> codecs, Text tag, const Allowed& allowed) {
    return {.type = type, .codecs = codecs, .tag = tag, .node = Node::Own, .allowed = allowed};
}
constexpr FormatRuleRow kRules[] = {
    OwnRule(StreamType::Video, kMpeg2, IFormatCodec::TAG_BITRATE, Range{.lo = 100'000, .hi = 9'800'000}),
    OwnRule(StreamType::Video, kMpeg1, IFormatCodec::TAG_BITRATE, Range{.lo = 100'000, .hi = 1'856'000}),
    OwnRule(StreamType::Audio, kHeldToTheDisc, IFormatCodec::TAG_BITRATE_MODE, Texts{kAudioModes}),
    OwnRule(StreamType::Audio, kHeldToTheDisc, IFormatCodec::TAG_BITRATE, Integers{kAudioBitrates}),
    {.type = StreamType::Audio,
     .codecs = kHeldToTheDisc,
     .tag = IFormatCodecAudio::TAG_SAMPLE_RATE,
     .node = Node::Resampler,
     .allowed = Integers{kSampleRates}},
};

/// Angles, sound tracks and sub-pictures of DVD-Video.
constexpr StreamLimits kLimits{.video = 9, .audio = 8, .subtitle = 32, .other = 0};
constexpr StreamRow AudioStream(std::span<const Text> codecs) {
    return {.type = StreamType::Audio, .codecs = codecs, .defaultCodec = IFormatCodecAudio::CODEC_ID_MP2};
}
constexpr StreamRow kDvdStreams[] = {kMpegVideoStream, AudioStream(kAudio)};
constexpr StreamRow kVcdStreams[] = {kMpegVideoStream, AudioStream(kMp2)};

constexpr FormatSheet Sheet(std::span<const StreamRow> streams) {
    return {
        .container = IFormatFile::FORMAT_DVD,
        .settings = kSettings,
        .limits = kLimits,
        .streams = streams,
        .rules = kRules,
    };
}
constexpr FormatSheet kDvdSheet = Sheet(kDvdStreams);
constexpr FormatSheet kVcdSheet = Sheet(kVcdStreams);
static_assert(IsSound(kDvdSheet) && IsSound(kVcdSheet));

}  // namespace

DataHelperFormatDVD::DataHelperFormatDVD(const std::string& container)
    : DataHelperFormatBase(container == IFormatFile::FORMAT_DVD ? kDvdSheet : kVcdSheet, container) {}

}  // namespace Kestro::Conf
