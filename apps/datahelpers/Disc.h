#pragma once

#include <boost/rational.hpp>
#include <cstdint>
#include <span>

#include "Kestro/Core/Property.h"

#include "Demands.h"

namespace App {

/// The picture of a disc in one television system.
struct Disc {
    std::span<const FrameSize> sizes;  ///< pixels, the usual first
    boost::rational<int64_t> fps;      ///< frames per second
    int64_t buffer;                    ///< bits that a player's video buffer holds
    bool isWide;                       ///< it may be shown at 16:9, else at 4:3 alone

    /// Of the container and the television system in a format node; null for what is no disc.
    static const Disc* Find(const Kestro::Core::Property& format);
};

/// What pixels must be so that a television shows the frame at 4:3, or at 16:9 where that may be and is nearer to the
/// picture's shape (its width by its height).
boost::rational<int64_t> TelevisionPixels(const FrameSize& frame, double pictureShape, bool mayBeWide);

/// What a disc demands of frame size and rate; nothing for another container.
void AddDiscDemands(const Kestro::Core::Property& format, Demands& demands);

}  // namespace App
