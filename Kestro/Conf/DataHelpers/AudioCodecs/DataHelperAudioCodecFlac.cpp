#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecFlac.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecAudio.h"

namespace Kestro::Conf {

namespace {

constexpr int64_t kSampleRates[] = {8'000, 16'000, 22'050, 24'000, 32'000, 44'100, 48'000, 96'000};
// The channel assignments of RFC 9639, 9.1.3, with the surround speakers at the side or behind.
constexpr ChannelLayout kLayouts[] = {
    ChannelLayout::Mono,          ChannelLayout::Stereo,
    ChannelLayout::Surround,      ChannelLayout::Quad,
    ChannelLayout::Layout2_2,     ChannelLayout::Layout5Point0Back,
    ChannelLayout::Layout5Point0, ChannelLayout::Layout5Point1Back,
    ChannelLayout::Layout5Point1, ChannelLayout::Layout6Point1,
    ChannelLayout::Layout7Point1,
};
// Of 32 bits the encoder keeps 24.
constexpr SampleFormats kFormats[] = {SampleFormats::S16, SampleFormats::S32};

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecAudio::CODEC_ID_FLAC,
    .stream = StreamType::Audio,
    .settings = {kVbrMode,
                 {.tag = IFormatCodecAudio::TAG_SAMPLE_FORMAT,
                  .node = Node::Resampler,
                  .allowed = SampleFormatList{kFormats}}},
    .globalHeader = true,
    .sampleRates = Integers{kSampleRates},
    .layouts = Layouts{kLayouts},
    .sampleFormats = SamplesOf{kFormats},
    .bitrateIsOptional = true,
    .encodedShares = {{kFormats[0], 0.53}, {kFormats[1], 0.69 * 24.0 / 32.0}},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperAudioCodecFlac::DataHelperAudioCodecFlac() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
