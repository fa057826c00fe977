#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecDV.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {

namespace {

// The profiles: 525 and 625 lines, 1080 and 720 lines.
constexpr FrameSize kSizes[] = {{720, 480}, {720, 576}, {1280, 1080}, {1440, 1080}, {960, 720}};
constexpr FrameRate kRates[] = {FrameRates::kNtsc, FrameRates::kPal, FrameRates::kNtscField, FrameRates::k50};

constexpr int64_t k525Lines[] = {480};
constexpr int64_t k625Lines[] = {576};
constexpr int64_t kWidthOf1080Ntsc[] = {1280};
constexpr int64_t kWidthOf1080Pal[] = {1440};
constexpr int64_t kWidthOf720[] = {960};
constexpr std::span<const FrameRate> kNtscRate = std::span(kRates).subspan(0, 1);
constexpr std::span<const FrameRate> kPalRate = std::span(kRates).subspan(1, 1);
constexpr std::span<const FrameRate> kRatesOf720 = std::span(kRates).subspan(2);

constexpr CodecRuleRow RateOf(Text side, std::span<const int64_t> pixels, std::span<const FrameRate> rates) {
    return {.when = side,
            .whenNode = Node::Resizer,
            .is = Integers{pixels},
            .tag = IFormatCodecVideo::TAG_FPS,
            .node = Node::FrameRate,
            .allowed = Rates{rates}};
}

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecVideo::CODEC_ID_DVVIDEO,
    .stream = StreamType::Video,
    .settings = {kCbrMode, kVideoBitrate, kVideoQuality},
    .frameSizes = FrameSizes{kSizes},
    .frameRates = Rates{kRates},
    .rules = {RateOf(IFormatCodecVideo::TAG_HEIGHT, k525Lines, kNtscRate),
              RateOf(IFormatCodecVideo::TAG_HEIGHT, k625Lines, kPalRate),
              RateOf(IFormatCodecVideo::TAG_WIDTH, kWidthOf1080Ntsc, kNtscRate),
              RateOf(IFormatCodecVideo::TAG_WIDTH, kWidthOf1080Pal, kPalRate),
              RateOf(IFormatCodecVideo::TAG_WIDTH, kWidthOf720, kRatesOf720)},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperVideoCodecDV::DataHelperVideoCodecDV() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
