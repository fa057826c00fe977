#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecMp3.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecAudio.h"

namespace Kestro::Conf {

namespace {

constexpr int64_t kBitrates[] = {32'000, 64'000, 96'000, 128'000, 160'000, 192'000, 224'000, 256'000, 320'000};
constexpr int64_t kSampleRates[] = {8'000, 11'025, 12'000, 16'000, 22'050, 24'000, 32'000, 44'100, 48'000};
constexpr BitrateLimits kLimits[] = {
    {.sampleRate = 8'000, .highest = 64'000},   {.sampleRate = 11'025, .highest = 64'000},
    {.sampleRate = 12'000, .highest = 64'000},  {.sampleRate = 16'000, .highest = 128'000},
    {.sampleRate = 22'050, .highest = 160'000}, {.sampleRate = 24'000, .highest = 160'000},
};

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecAudio::CODEC_ID_MP3,
    .stream = StreamType::Audio,
    .settings = {kCbrOrVbrMode, AudioBitrate(kBitrates), kAudioQuality},
    .sampleRates = Integers{kSampleRates},
    .layouts = Layouts{kMonoAndStereo},
    .bitrateLimits = kLimits,
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperAudioCodecMp3::DataHelperAudioCodecMp3() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
