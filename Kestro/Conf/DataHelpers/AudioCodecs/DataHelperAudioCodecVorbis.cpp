#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecVorbis.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecAudio.h"

namespace Kestro::Conf {

namespace {

constexpr int64_t kBitrates[] = {16'000,  32'000,  48'000,  64'000,  80'000,  96'000,  112'000,
                                 128'000, 160'000, 192'000, 224'000, 256'000, 288'000, 320'000};
constexpr int64_t kSampleRates[] = {8'000, 11'025, 16'000, 22'050, 24'000, 32'000, 44'100, 48'000};
// The channel orders of Vorbis I, 4.3.9.
constexpr ChannelLayout kLayouts[] = {
    ChannelLayout::Mono,
    ChannelLayout::Stereo,
    ChannelLayout::Surround,
    ChannelLayout::Quad,
    ChannelLayout::Layout5Point0Back,
    ChannelLayout::Layout5Point1Back,
    ChannelLayout::Layout6Point1,
    ChannelLayout::Layout7Point1,
};
// What libvorbis 1.3 takes, as it answers.
constexpr BitrateLimits kLimits[] = {
    {8'000, 8'000, 12'000, 48'000, 42'000},    {11'025, 12'000, 16'000, 72'000, 50'000},
    {16'000, 16'000, 24'000, 96'000, 100'000}, {22'050, 16'000, 30'000, 96'000, 90'000},
    {24'000, 16'000, 30'000, 96'000, 90'000},  {32'000, 30'000, 36'000, 180'000, 190'000},
    {44'100, 32'000, 45'000, 84'000, 240'000}, {48'000, 32'000, 45'000, 84'000, 240'000},
};

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecAudio::CODEC_ID_VORBIS,
    .stream = StreamType::Audio,
    .settings = {kCbrOrVbrMode, AudioBitrate(kBitrates), kAudioQuality},
    .globalHeader = true,
    .sampleRates = Integers{kSampleRates},
    .layouts = Layouts{kLayouts},
    .bitrateIsOptional = true,
    .bitrateLimits = kLimits,
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperAudioCodecVorbis::DataHelperAudioCodecVorbis() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
