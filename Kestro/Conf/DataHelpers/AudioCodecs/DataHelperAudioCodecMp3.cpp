#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecMp3.h"

#include <algorithm>

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecAudio.h"

namespace Kestro::Conf {

namespace {

constexpr int64_t kBitrates[] = {32'000, 64'000, 96'000, 128'000, 160'000, 192'000, 224'000, 256'000, 320'000};
constexpr int64_t kSampleRates[] = {8'000, 11'025, 12'000, 16'000, 22'050, 24'000, 32'000, 44'100, 48'000};

constexpr SettingRow kSettings[] = {
    kCbrOrVbrMode,
    AudioBitrate(kBitrates),
    kAudioQuality,
};
constexpr CodecSheet kSheet{
    .codecId = IFormatCodecAudio::CODEC_ID_MP3,
    .stream = StreamType::Audio,
    .settings = kSettings,
    .sampleRates = Integers{kSampleRates},
    .layouts = Layouts{kMonoAndStereo},
};
static_assert(IsSound(kSheet));

/// Highest bitrate at a sample rate; MPEG-1 rates and others have the highest of all.
struct BitrateLimit {
    int64_t sampleRate;
    int64_t bitrate;
};
constexpr BitrateLimit kLimits[] = {{8'000, 64'000},   {11'025, 64'000},  {12'000, 64'000},
                                    {16'000, 128'000}, {22'050, 160'000}, {24'000, 160'000}};
constexpr int64_t kHighestBitrate = 320'000;

int64_t BitrateLimitAt(int64_t sampleRate) {
    for (const BitrateLimit& limit : kLimits) {
        if (limit.sampleRate == sampleRate) return limit.bitrate;
    }
    return kHighestBitrate;
}

}  // namespace

DataHelperAudioCodecMp3::DataHelperAudioCodecMp3() : DataHelperCodecFFMPEG(kSheet) {}

void DataHelperAudioCodecMp3::CorrectFormatCodec(Core::Property& settings) const {
    DataHelperCodecFFMPEG::CorrectFormatCodec(settings);
    const std::string& rate = IFormatCodecAudio::TAG_SAMPLE_RATE;
    const std::string& bitrate = IFormatCodec::TAG_BITRATE;
    if (!settings.ChildExists(rate) || !settings.ChildExists(bitrate)) return;
    settings.SetChild(bitrate, std::min(settings[bitrate].GetInt64(), BitrateLimitAt(settings[rate].GetInt64())));
}

}  // namespace Kestro::Conf
