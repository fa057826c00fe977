#pragma once

#include <string>
#include <vector>

#include "tools/muxers/MuxerData.h"

namespace Measure {

struct Measurement {
    MuxerData data;
    std::vector<std::string>
        synthetic;                  ///< codecs without an encoder: a description with meaningless packets was tried
    std::vector<std::string> hung;  ///< "flv mp3": what had to be killed, and counts as not stored
};

/// Writes every codec of the vocabulary, in every sound, with every muxer that a container's name leads to, and reads
/// it back. Takes a minute or so. Throws std::runtime_error where the machine does not let it.
Measurement MeasureMuxers();

}  // namespace Measure
