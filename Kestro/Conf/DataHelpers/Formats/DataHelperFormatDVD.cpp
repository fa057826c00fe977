#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatDVD.h"

#include "Kestro/Conf/DataHelpers/FormatFacts.h"
#include "Kestro/Conf/DataHelpers/SharedRanges.h"

namespace Kestro::Conf {

namespace {

constexpr Text kStandards[] = {IFormatFile::DVD_STANDARD_NTSC, IFormatFile::DVD_STANDARD_PAL};
constexpr NamedInteger kDisks[] = {
    {IFormatFile::DISK_TYPE_DVD_MINI, IFormatFile::DISK_SIZE_DVD_MINI},
    {IFormatFile::DISK_TYPE_DVD_STANDARD, IFormatFile::DISK_SIZE_DVD_STANDARD},
    {IFormatFile::DISK_TYPE_DVD_DOUBLE_LAYER, IFormatFile::DISK_SIZE_DVD_DOUBLE_LAYER},
};
constexpr Text kVideoModes[] = {IFormatCodec::TAG_BITRATE_MODE_CBR_AUTO, IFormatCodec::TAG_BITRATE_MODE_CBR};
constexpr Text kAudioModes[] = {IFormatCodec::TAG_BITRATE_MODE_CBR};
constexpr int64_t kAudioBitrates[] = {256'000};
constexpr Codecs kAudio = {IFormatCodecAudio::CODEC_ID_AC3, IFormatCodecAudio::CODEC_ID_MP2};

constexpr FormatRuleRow VideoBitrate(Text codec, const Range& bitrates) {
    return {.type = StreamType::Video, .codecs = {codec}, .tag = IFormatCodec::TAG_BITRATE, .allowed = bitrates};
}
constexpr FormatSheet Sheet(const Codecs& audio) {
    return {
        .container = IFormatFile::FORMAT_DVD,
        .settings = {{.tag = IFormatFile::TAG_DVD_STANDARD,
                      .initial = IFormatFile::DVD_STANDARD_NTSC,
                      .allowed = Texts{kStandards}},
                     {.tag = IFormatFile::TAG_DISK_SIZE,
                      .initial = IFormatFile::DISK_SIZE_DVD_STANDARD,
                      .allowed = NamedIntegers{kDisks}},
                     {.tag = IFormatCodec::TAG_BITRATE_MODE, .node = Node::FirstVideo, .allowed = Texts{kVideoModes}},
                     {.tag = IFormatCodec::TAG_BITRATE,
                      .node = Node::FirstVideo,
                      .allowed = Shared{VideoBitrateRange}}},
        // Angles, sound tracks and sub-pictures of DVD-Video.
        .limits = {.video = 9, .audio = 8, .subtitle = 32},
        .streams = {kMpegVideoStream,
                    {.type = StreamType::Audio, .codecs = audio, .defaultCodec = IFormatCodecAudio::CODEC_ID_MP2}},
        .rules = {VideoBitrate(IFormatCodecVideo::CODEC_ID_MPEG2VIDEO, {.lo = 100'000, .hi = 9'800'000}),
                  VideoBitrate(IFormatCodecVideo::CODEC_ID_MPEG1VIDEO, {.lo = 100'000, .hi = 1'856'000}),
                  {.type = StreamType::Audio,
                   .codecs = kAudio,
                   .tag = IFormatCodec::TAG_BITRATE_MODE,
                   .allowed = Texts{kAudioModes}},
                  {.type = StreamType::Audio,
                   .codecs = kAudio,
                   .tag = IFormatCodec::TAG_BITRATE,
                   .allowed = Integers{kAudioBitrates}},
                  AudioRate(k48kHz, kAudio)},
    };
}
constexpr FormatSheet kDvdSheet = Sheet({IFormatCodecAudio::CODEC_ID_MP2, IFormatCodecAudio::CODEC_ID_AC3});
constexpr FormatSheet kVcdSheet = Sheet({IFormatCodecAudio::CODEC_ID_MP2});
static_assert(IsConsistent(kDvdSheet) && IsConsistent(kVcdSheet));

}  // namespace

DataHelperFormatDVD::DataHelperFormatDVD(const std::string& container)
    : DataHelperFormatBase(container == IFormatFile::FORMAT_DVD ? kDvdSheet : kVcdSheet, container) {}

}  // namespace Kestro::Conf
