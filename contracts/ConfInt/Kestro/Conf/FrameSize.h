#pragma once

#include <cstdint>

namespace Kestro::Conf {

/// The size of a picture, pixels.
struct FrameSize {
    int64_t width;
    int64_t height;
    bool operator==(const FrameSize&) const = default;
};

}  // namespace Kestro::Conf
