#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecWmav2.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecAudio.h"

namespace Kestro::Conf {

namespace {

constexpr int64_t kBitrates[] = {32'000,  48'000,  64'000,  80'000,  96'000,  112'000, 128'000,
                                 160'000, 192'000, 224'000, 256'000, 288'000, 320'000};
constexpr int64_t kSampleRates[] = {8'000, 11'025, 16'000, 22'050, 32'000, 44'100, 48'000};

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecAudio::CODEC_ID_WMAV2,
    .stream = StreamType::Audio,
    .settings = {kCbrOrVbrMode, AudioBitrate(kBitrates), kAudioQuality},
    .globalHeader = true,
    .sampleRates = Integers{kSampleRates},
    .layouts = Layouts{kMonoAndStereo},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperAudioCodecWmav2::DataHelperAudioCodecWmav2() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
