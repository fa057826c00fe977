#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecAlac.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecAudio.h"

namespace Kestro::Conf {

namespace {

// One for each number of channels.
constexpr ChannelLayout kLayouts[] = {
    ChannelLayout::Mono,
    ChannelLayout::Stereo,
    ChannelLayout::Surround,
    ChannelLayout::Layout4Point0,
    ChannelLayout::Layout5Point0Back,
    ChannelLayout::Layout5Point1Back,
    ChannelLayout::Layout6Point1Back,
    ChannelLayout::Layout7Point1WideBack,
};
// The encoder keeps 24 of 32 bits.
constexpr SampleFormats kFormats[] = {SampleFormats::S16p, SampleFormats::S32p};
constexpr EncodedShare kShares[] = {{kFormats[0], 0.54}, {kFormats[1], 0.7 * 24.0 / 32.0}};

constexpr SettingRow kSettings[] = {
    kVbrMode,
    kGlobalHeader,
    {.tag = IFormatCodecAudio::TAG_SAMPLE_FORMAT, .node = Node::Resampler, .allowed = SampleFormatList{kFormats}},
};
constexpr CodecSheet kSheet{
    .codecId = IFormatCodecAudio::CODEC_ID_ALAC,
    .stream = StreamType::Audio,
    .settings = kSettings,
    .sampleRates = kAnySampleRate,
    .layouts = Layouts{kLayouts},
    .sampleFormats = SamplesOf{kFormats},
    .bitrateIsOptional = true,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperAudioCodecAlac::DataHelperAudioCodecAlac() : DataHelperAudioCodecLossless(kSheet, kSheet.codecId, kShares) {}

}  // namespace Kestro::Conf
