#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecAac.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecAudio.h"

namespace Kestro::Conf {

namespace {

constexpr int64_t kBitrates[] = {32'000,  64'000,  96'000,  128'000, 160'000, 192'000,
                                 224'000, 256'000, 320'000, 448'000, 512'000};
// A frame holds at most 6144 bits a channel (ISO/IEC 14496-3, 4.5.3.1): 288 kbit/s at 48000 Hz.
constexpr int64_t kBitratesOfTwoChannels[] = {320'000, 448'000, 512'000};
constexpr int64_t kSampleRates[] = {96'000, 88'200, 64'000, 48'000, 44'100, 32'000, 24'000,
                                    22'050, 16'000, 12'000, 11'025, 8'000,  7'350};
// The channel configurations that have a number of their own (ISO/IEC 14496-3, table 1.19): every player knows them.
constexpr ChannelLayout kLayouts[] = {
    ChannelLayout::Mono,
    ChannelLayout::Stereo,
    ChannelLayout::Surround,
    ChannelLayout::Layout4Point0,
    ChannelLayout::Layout5Point0Back,
    ChannelLayout::Layout5Point1Back,
    ChannelLayout::Layout7Point1,
};
constexpr std::span<const ChannelLayout> kLayoutsAboveMono = std::span(kLayouts).subspan(1);
constexpr Text kProfiles[] = {
    IFormatCodecAudio::TAG_AAC_PROFILE_LOW,   IFormatCodecAudio::TAG_AAC_PROFILE_SSR,
    IFormatCodecAudio::TAG_AAC_PROFILE_LTP,   IFormatCodecAudio::TAG_AAC_PROFILE_HE,
    IFormatCodecAudio::TAG_AAC_PROFILE_HE_V2, IFormatCodecAudio::TAG_AAC_PROFILE_LD,
    IFormatCodecAudio::TAG_AAC_PROFILE_ELD,
};

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecAudio::CODEC_ID_AAC,
    .stream = StreamType::Audio,
    .settings = {kCbrMode,
                 AudioBitrate(kBitrates),
                 {.tag = IFormatCodec::TAG_PROFILE,
                  .node = Node::Options,
                  .initial = IFormatCodecAudio::TAG_AAC_PROFILE_LOW,
                  .allowed = Texts{kProfiles}},
                 {.tag = IFormatCodecAudio::TAG_LAYOUT, .node = Node::Resampler, .allowed = Layouts{kLayouts}}},
    .globalHeader = true,
    .sampleRates = Integers{kSampleRates},
    .layouts = Layouts{kLayouts},
    .rules = {{.when = IFormatCodec::TAG_BITRATE,
               .is = Integers{kBitratesOfTwoChannels},
               .tag = IFormatCodecAudio::TAG_LAYOUT,
               .node = Node::Resampler,
               .allowed = Layouts{kLayoutsAboveMono}}},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperAudioCodecAac::DataHelperAudioCodecAac() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
