#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecX264.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {

namespace {

constexpr Text kPasses[] = {IFormatCodec::TAG_ONE_PASS_MODE, IFormatCodec::TAG_TWO_PASS_MODE};
constexpr Text kPresets[] = {
    IFormatCodecVideo::TAG_X264_PRESET_ULTRAFAST, IFormatCodecVideo::TAG_X264_PRESET_SUPERFAST,
    IFormatCodecVideo::TAG_X264_PRESET_VERYFAST,  IFormatCodecVideo::TAG_X264_PRESET_FASTER,
    IFormatCodecVideo::TAG_X264_PRESET_FAST,      IFormatCodecVideo::TAG_X264_PRESET_MEDIUM,
    IFormatCodecVideo::TAG_X264_PRESET_SLOW,      IFormatCodecVideo::TAG_X264_PRESET_SLOWER,
    IFormatCodecVideo::TAG_X264_PRESET_VERYSLOW,  IFormatCodecVideo::TAG_X264_PRESET_PLACEBO,
};
constexpr Text kProfiles[] = {
    IFormatCodecVideo::TAG_X264_PROFILE_BASELINE, IFormatCodecVideo::TAG_X264_PROFILE_MAIN,
    IFormatCodecVideo::TAG_X264_PROFILE_HIGH,     IFormatCodecVideo::TAG_X264_PROFILE_HIGH10,
    IFormatCodecVideo::TAG_X264_PROFILE_HIGH422,  IFormatCodecVideo::TAG_X264_PROFILE_HIGH444,
};
// 4:2:0 halves the chroma in width and height, 4:2:2 in width.
constexpr std::span<const Text> kProfiles420 = std::span(kProfiles).first(4);
constexpr std::span<const Text> kProfiles420And422 = std::span(kProfiles).first(5);
constexpr Text kTunes[] = {
    IFormatCodecVideo::TAG_X264_TUNE_FILM,       IFormatCodecVideo::TAG_X264_TUNE_ANIMATION,
    IFormatCodecVideo::TAG_X264_TUNE_GRAIN,      IFormatCodecVideo::TAG_X264_TUNE_STILLIMAGE,
    IFormatCodecVideo::TAG_X264_TUNE_PSNR,       IFormatCodecVideo::TAG_X264_TUNE_SSIM,
    IFormatCodecVideo::TAG_X264_TUNE_FASTDECODE, IFormatCodecVideo::TAG_X264_TUNE_ZEROLATENCY,
};

constexpr CodecRuleRow EvenSide(std::span<const Text> profiles, Text side) {
    return {.when = IFormatCodec::TAG_PROFILE,
            .whenNode = Node::Options,
            .is = Texts{profiles},
            .tag = side,
            .node = Node::Resizer,
            .allowed = EvenSize()};
}
constexpr CodecSheet kSheet{
    .codecId = IFormatCodecVideo::CODEC_ID_H264,
    .stream = StreamType::Video,
    .settings = {kVideoBitrate,
                 kCbrOrVbrMode,
                 {.tag = IFormatCodec::TAG_MULTIPASS_ENCODING,
                  .initial = IFormatCodec::TAG_ONE_PASS_MODE,
                  .allowed = Texts{kPasses}}},
    .globalHeader = true,
    .settingsAfterHeader = {{.tag = IFormatCodecVideo::TAG_MAX_I_FRAME_INTERVAL, .initial = 25},
                            {.tag = IFormatCodecVideo::TAG_MAX_B_FRAME_SEQUENCE, .initial = 0},
                            {.tag = IFormatCodec::TAG_PRESET,
                             .node = Node::Options,
                             .initial = IFormatCodecVideo::TAG_X264_PRESET_FASTER,
                             .allowed = Texts{kPresets}},
                            {.tag = IFormatCodec::TAG_PROFILE,
                             .node = Node::Options,
                             .initial = IFormatCodecVideo::TAG_X264_PROFILE_MAIN,
                             .allowed = Texts{kProfiles}},
                            {.tag = IFormatCodecVideo::TAG_X264_TUNE,
                             .node = Node::Options,
                             .initial = IFormatCodecVideo::TAG_X264_TUNE_FILM,
                             .allowed = Texts{kTunes}},
                            kVideoQuality},
    .frameRates = kAnyFrameRate,
    .rules = {EvenSide(kProfiles420And422, IFormatCodecVideo::TAG_WIDTH),
              EvenSide(kProfiles420, IFormatCodecVideo::TAG_HEIGHT)},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperVideoCodecX264::DataHelperVideoCodecX264() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
