#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Kestro/Conf/StreamType.h"

namespace App {

using Kestro::Conf::StreamType;

/// What came out of a file that was decoded to its end.
struct Decoded {
    struct Stream {
        StreamType type;
        int64_t count = 0;  ///< pictures, samples of one channel, subtitles
        int64_t width = 0;
        int64_t height = 0;
        int64_t sampleRate = 0;
        int channels = 0;
        bool hasMatrix = false;  ///< its pixels are not red, green and blue
    };
    std::vector<Stream> streams;  ///< in the file's order; data is none
    std::string error;            ///< the first; empty: all came out without a word
};

/// picture: codec id of the one picture that the file is; empty: it is none.
Decoded DecodeToEnd(const std::string& path, const std::string& picture);

}  // namespace App
