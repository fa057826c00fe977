#include "Kestro/FFWrapper/BitrateLimits.h"

#include <algorithm>

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/LayoutRecord.h"

namespace Kestro::FFWrapper {
namespace {

/// FFmpeg's mask of the low-frequency channel.
constexpr uint64_t kLowFrequency = 0x8;

/// FFmpeg's DTS encoder: a frame of 512 samples must hold its headers and each channel's scale factors.
BitrateLimits OfDts(int64_t sampleRate, const Conf::LayoutRecord& layout) {
    constexpr int64_t kSamples = 512;
    constexpr int64_t kAlignment = 32;
    const int64_t lowChannels = (layout.ffmpegMask & kLowFrequency) != 0 ? 1 : 0;
    const int64_t leastBits = 132 + 1389 * (layout.channels - lowChannels) + 72 * lowChannels;
    // The bits of a frame are aligned upwards, so any above the multiple before suffice.
    const int64_t multipleBefore = (leastBits - 1) / kAlignment * kAlignment;
    return {std::max(Conf::IFormatCodecAudio::MIN_DTS_BITRATE, multipleBefore * sampleRate / kSamples + 1),
            Conf::IFormatCodecAudio::MAX_DTS_BITRATE};
}

}  // namespace

std::optional<BitrateLimits> BitrateLimits::OfAudio(const std::string& encoderName, int64_t sampleRate,
                                                    Conf::ChannelLayout layout) {
    const Conf::LayoutRecord* record = Conf::LayoutRecord::Find(layout);
    if (encoderName != "dca" || record == nullptr) return std::nullopt;
    return OfDts(sampleRate, *record);
}

std::optional<BitrateLimits> BitrateLimits::OfVideo(const std::string& encoderName) {
    if (encoderName != "libsvtav1") return std::nullopt;
    return BitrateLimits{1'000, 100'000'000};  // it counts in kbit/s
}

}  // namespace Kestro::FFWrapper
