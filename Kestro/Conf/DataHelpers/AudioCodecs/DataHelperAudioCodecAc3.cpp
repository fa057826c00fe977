#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecAc3.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecAudio.h"

namespace Kestro::Conf {

namespace {

constexpr int64_t kBitrates[] = {64'000,  80'000,  96'000,  112'000, 128'000, 160'000,
                                 192'000, 224'000, 256'000, 320'000, 384'000, 448'000};
constexpr ChannelLayout kLayouts[] = {
    ChannelLayout::Mono,          ChannelLayout::Stereo,           ChannelLayout::Layout2_1,
    ChannelLayout::Surround,      ChannelLayout::Layout2_2,        ChannelLayout::Quad,
    ChannelLayout::Layout4Point0, ChannelLayout::Layout5Point0,    ChannelLayout::Layout5Point0Back,
    ChannelLayout::Layout2Point1, ChannelLayout::Layout3Point1,    ChannelLayout::Layout4Point1,
    ChannelLayout::Layout5Point1, ChannelLayout::Layout5Point1Back};

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecAudio::CODEC_ID_AC3,
    .stream = StreamType::Audio,
    .settings = {kCbrMode, AudioBitrate(kBitrates)},
    .sampleRates = Integers{kMpeg1SampleRates},
    .layouts = Layouts{kLayouts},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperAudioCodecAc3::DataHelperAudioCodecAc3() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
