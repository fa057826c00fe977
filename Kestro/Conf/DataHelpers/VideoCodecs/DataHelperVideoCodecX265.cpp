#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecX265.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {

namespace {

constexpr Text kPresets[] = {
    IFormatCodecVideo::TAG_X265_PRESET_ULTRAFAST, IFormatCodecVideo::TAG_X265_PRESET_SUPERFAST,
    IFormatCodecVideo::TAG_X265_PRESET_VERYFAST,  IFormatCodecVideo::TAG_X265_PRESET_FASTER,
    IFormatCodecVideo::TAG_X265_PRESET_FAST,      IFormatCodecVideo::TAG_X265_PRESET_MEDIUM,
    IFormatCodecVideo::TAG_X265_PRESET_SLOW,      IFormatCodecVideo::TAG_X265_PRESET_SLOWER,
    IFormatCodecVideo::TAG_X265_PRESET_VERYSLOW,  IFormatCodecVideo::TAG_X265_PRESET_PLACEBO,
};
constexpr Text kProfiles[] = {IFormatCodecVideo::TAG_X265_PROFILE_MAIN};

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecVideo::CODEC_ID_H265,
    .stream = StreamType::Video,
    .settings = {kVideoBitrate,
                 {.tag = IFormatCodec::TAG_BITRATE_MODE,
                  .initial = IFormatCodec::TAG_BITRATE_MODE_CBR_AUTO,
                  .allowed = Texts{kCbrOrVbr},
                  .isOutside = true}},
    .globalHeader = true,
    .settingsAfterHeader = {{.tag = IFormatCodecVideo::TAG_MAX_I_FRAME_INTERVAL, .initial = 15},
                            {.tag = IFormatCodecVideo::TAG_MAX_B_FRAME_SEQUENCE, .initial = 0},
                            {.tag = IFormatCodec::TAG_PRESET,
                             .node = Node::Options,
                             .initial = IFormatCodecVideo::TAG_X265_PRESET_FASTER,
                             .allowed = Texts{kPresets}},
                            {.tag = IFormatCodec::TAG_PROFILE,
                             .node = Node::Options,
                             .initial = IFormatCodecVideo::TAG_X265_PROFILE_MAIN,
                             .allowed = Texts{kProfiles}},
                            kVideoQuality},
    // 4:2:0 halves the chroma in width and height.
    .widths = EvenSize(),
    .heights = EvenSize(),
    .frameRates = kAnyFrameRate,
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperVideoCodecX265::DataHelperVideoCodecX265() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
