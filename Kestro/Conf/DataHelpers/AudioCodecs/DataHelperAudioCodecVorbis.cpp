#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecVorbis.h"

#include <cstdlib>
#include <limits>

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/LayoutRecord.h"

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

constexpr SettingRow kSettings[] = {
    kCbrOrVbrMode,
    AudioBitrate(kBitrates),
    kAudioQuality,
    kGlobalHeader,
};
constexpr CodecSheet kSheet{
    .codecId = IFormatCodecAudio::CODEC_ID_VORBIS,
    .stream = StreamType::Audio,
    .settings = kSettings,
    .sampleRates = Integers{kSampleRates},
    .layouts = Layouts{kLayouts},
    .bitrateIsOptional = true,
};
static_assert(IsSound(kSheet));

/// The bitrates that libvorbis 1.3 takes at a sample rate, as it answers. Channels are coupled in pairs, and in six;
/// others are coded each for itself.
struct BitrateLimits {
    int64_t sampleRate;
    int64_t lowestOfChannel;
    int64_t lowestOfStereo;
    int64_t lowestOfSix;
    int64_t highestOfChannel;
};
constexpr BitrateLimits kLimits[] = {
    {8'000, 8'000, 12'000, 48'000, 42'000},    {11'025, 12'000, 16'000, 72'000, 50'000},
    {16'000, 16'000, 24'000, 96'000, 100'000}, {22'050, 16'000, 30'000, 96'000, 90'000},
    {24'000, 16'000, 30'000, 96'000, 90'000},  {32'000, 30'000, 36'000, 180'000, 190'000},
    {44'100, 32'000, 45'000, 84'000, 240'000}, {48'000, 32'000, 45'000, 84'000, 240'000},
};

int64_t Lowest(const BitrateLimits& limits, int64_t channels) {
    if (channels == 2) return limits.lowestOfStereo;
    if (channels == 6) return limits.lowestOfSix;
    return limits.lowestOfChannel * channels;
}

int64_t NearestBitrate(int64_t wanted, int64_t lowest, int64_t highest) {
    int64_t nearest = wanted;
    int64_t least = std::numeric_limits<int64_t>::max();
    for (const int64_t bitrate : kBitrates) {
        if (bitrate < lowest || bitrate > highest) continue;
        const int64_t distance = std::abs(bitrate - wanted);
        if (distance < least) {
            least = distance;
            nearest = bitrate;
        }
    }
    return nearest;
}

}  // namespace

DataHelperAudioCodecVorbis::DataHelperAudioCodecVorbis() : DataHelperCodecFFMPEG(kSheet) {}

void DataHelperAudioCodecVorbis::CorrectFormatCodec(Core::Property& settings) const {
    DataHelperCodecFFMPEG::CorrectFormatCodec(settings);
    const std::string& rate = IFormatCodecAudio::TAG_SAMPLE_RATE;
    const std::string& layout = IFormatCodecAudio::TAG_LAYOUT;
    const std::string& bitrate = IFormatCodec::TAG_BITRATE;
    if (!settings.ChildExists(rate) || !settings.ChildExists(layout) || !settings.ChildExists(bitrate)) return;
    // What no record knows has failed the check, and so has a rate that has no limits.
    const int64_t channels = LayoutRecord::Find(settings[layout].GetString())->channels;
    for (const BitrateLimits& limits : kLimits) {
        if (limits.sampleRate != settings[rate].GetInt64()) continue;
        settings.SetChild(bitrate, NearestBitrate(settings[bitrate].GetInt64(), Lowest(limits, channels),
                                                  limits.highestOfChannel * channels));
    }
}

}  // namespace Kestro::Conf
