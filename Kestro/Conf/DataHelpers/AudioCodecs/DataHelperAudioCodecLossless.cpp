#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecLossless.h"

#include <cmath>

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/LayoutRecord.h"
#include "Kestro/Conf/SampleFmtRecord.h"

namespace Kestro::Conf {

DataHelperAudioCodecLossless::DataHelperAudioCodecLossless(const CodecSheet& sheet, const std::string& codecId,
                                                           std::span<const EncodedShare> shares)
    : DataHelperCodecFFMPEG(sheet, codecId), shares_(shares) {}

void DataHelperAudioCodecLossless::CorrectFormatCodec(Core::Property& settings) const {
    CorrectAudioResamplerSettings(settings);
    settings.SetChild(IFormatCodec::TAG_BITRATE_MODE, GetDefaultSettings()[IFormatCodec::TAG_BITRATE_MODE]);

    const std::string& rate = IFormatCodecAudio::TAG_SAMPLE_RATE;
    const std::string& layout = IFormatCodecAudio::TAG_LAYOUT;
    const std::string& format = IFormatCodecAudio::TAG_SAMPLE_FORMAT;
    if (!settings.ChildExists(rate) || !settings.ChildExists(layout) || !settings.ChildExists(format)) return;
    // What no record knows has failed the check.
    const int64_t channels = LayoutRecord::Find(settings[layout].GetString())->channels;
    const SampleFmtRecord& samples = *SampleFmtRecord::Find(settings[format].GetString());
    for (const EncodedShare& encoded : shares_) {
        if (encoded.format != samples.code && encoded.format != samples.alternative) continue;
        const int64_t raw = settings[rate].GetInt64() * channels * samples.bitsPerSample;
        settings.SetChild(IFormatCodec::TAG_BITRATE,
                          static_cast<int64_t>(std::llround(static_cast<double>(raw) * encoded.share)));
    }
}

}  // namespace Kestro::Conf
