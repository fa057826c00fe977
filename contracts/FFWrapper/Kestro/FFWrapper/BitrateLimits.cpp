#include "Kestro/FFWrapper/BitrateLimits.h"

#include "Kestro/Conf/LayoutRecord.h"
#include "Kestro/FFWrapper/EncoderRecord.h"

namespace Kestro::FFWrapper {

std::optional<BitrateLimits> BitrateLimits::OfAudio(const std::string& encoderName, int64_t sampleRate,
                                                    Conf::ChannelLayout layout) {
    const EncoderRecord* encoder = EncoderRecord::Find(encoderName);
    const Conf::LayoutRecord* channels = Conf::LayoutRecord::Find(layout);
    if (encoder == nullptr || encoder->audioLimits == nullptr || channels == nullptr) return std::nullopt;
    return encoder->audioLimits(sampleRate, *channels);
}

std::optional<BitrateLimits> BitrateLimits::OfVideo(const std::string& encoderName) {
    const EncoderRecord* encoder = EncoderRecord::Find(encoderName);
    return encoder != nullptr ? encoder->videoLimits : std::nullopt;
}

}  // namespace Kestro::FFWrapper
