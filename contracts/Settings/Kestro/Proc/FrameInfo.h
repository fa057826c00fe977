#pragma once

#include <boost/rational.hpp>
#include <cstdint>

namespace Kestro::Proc {

/// Geometry of a video frame.
struct FrameInfo {
    int64_t width = 0;   ///< pixels
    int64_t height = 0;  ///< pixels
    /// Width of a pixel divided by its height, as it is shown.
    boost::rational<int64_t> sampleAspectRatio = 1;
};

}  // namespace Kestro::Proc
