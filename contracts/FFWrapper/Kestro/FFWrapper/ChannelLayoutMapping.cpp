#include "Kestro/FFWrapper/ChannelLayoutMapping.h"

#include "Kestro/Conf/LayoutRecord.h"

namespace Kestro::FFWrapper {

Conf::ChannelLayout ChannelLayoutKestroFromFFMPEG(uint64_t mask) {
    for (const Conf::LayoutRecord& record : Conf::LayoutRecord::All()) {
        if (record.ffmpegMask == mask) return record.code;
    }
    return Conf::ChannelLayout::Unknown;
}

bool ChannelLayoutFFMPEGIsSupported(uint64_t mask) {
    return ChannelLayoutKestroFromFFMPEG(mask) != Conf::ChannelLayout::Unknown;
}

}  // namespace Kestro::FFWrapper
