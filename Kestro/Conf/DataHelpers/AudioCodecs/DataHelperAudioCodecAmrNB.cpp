#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecAmrNB.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecAudio.h"

namespace Kestro::Conf {

namespace {

// The eight modes of the codec.
constexpr int64_t kBitrates[] = {4'750, 5'150, 5'900, 6'700, 7'400, 7'950, 10'200, 12'200};
constexpr int64_t kSampleRates[] = {8'000};

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecAudio::CODEC_ID_AMR_NB,
    .stream = StreamType::Audio,
    .settings = {kCbrMode, AudioBitrate(kBitrates, 12'200)},
    .sampleRates = Integers{kSampleRates},
    .layouts = Layouts{kMono},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperAudioCodecAmrNB::DataHelperAudioCodecAmrNB() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
