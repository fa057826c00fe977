#pragma once

#include <cstdint>
#include <string>

#include "Kestro/Export.h"

namespace Kestro::FFWrapper {

/// About what a container adds to what it stores, bytes.
struct KESTRO_FFWRAPPER_API MuxerOverhead {
    int64_t perFile;
    int64_t perPacket;

    /// Of FFmpeg's muxer with that name; of one that is not known, more than most add.
    static MuxerOverhead Of(const std::string& muxer);
};

}  // namespace Kestro::FFWrapper
