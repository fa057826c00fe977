#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecAlac.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecAudio.h"

namespace Kestro::Conf {

namespace {

// The encoder takes one layout for each number of channels.
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
// Of 32 bits the encoder keeps 24.
constexpr SampleFormats kFormats[] = {SampleFormats::S16p, SampleFormats::S32p};

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecAudio::CODEC_ID_ALAC,
    .stream = StreamType::Audio,
    .settings = {kVbrMode,
                 {.tag = IFormatCodecAudio::TAG_SAMPLE_FORMAT,
                  .node = Node::Resampler,
                  .allowed = SampleFormatList{kFormats}}},
    .globalHeader = true,
    .sampleRates = kAnySampleRate,
    .layouts = Layouts{kLayouts},
    .sampleFormats = SamplesOf{kFormats},
    .bitrateIsOptional = true,
    .encodedShares = {{kFormats[0], 0.54}, {kFormats[1], 0.7 * 24.0 / 32.0}},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperAudioCodecAlac::DataHelperAudioCodecAlac() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
