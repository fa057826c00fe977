#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecMp2.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecAudio.h"

namespace Kestro::Conf {

namespace {

constexpr int64_t kBitrates[] = {32'000,  48'000,  56'000,  64'000,  80'000,  96'000, 112'000,
                                 128'000, 160'000, 192'000, 224'000, 256'000, 320'000};

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecAudio::CODEC_ID_MP2,
    .stream = StreamType::Audio,
    .settings = {kCbrMode, AudioBitrate(kBitrates)},
    .sampleRates = Integers{kMpeg1SampleRates},
    .layouts = Layouts{kMonoAndStereo},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperAudioCodecMp2::DataHelperAudioCodecMp2() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
