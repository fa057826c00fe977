#pragma once

#include <boost/rational.hpp>
#include <cstdint>

namespace Kestro::Proc {

/// Settings of the frame-rate converter.
struct SettingsFilterFrameRate {
    /// 0/1: the source's frame rate is kept. Any other rate is in frames per second.
    static constexpr boost::rational<int64_t> MARK_USE_ORIGINAL_FRAMERATE = 0;

    boost::rational<int64_t> fps = MARK_USE_ORIGINAL_FRAMERATE;
};

}  // namespace Kestro::Proc
