#pragma once

#include <boost/rational.hpp>
#include <cstdint>
#include <span>
#include <string>

#include "Kestro/Conf/FrameSize.h"
#include "Kestro/Core/Property.h"
#include "Kestro/Export.h"

namespace Kestro::Conf {

/// The picture of a disc in one television system.
struct KESTRO_CONFINT_API DiscRecord {
    const std::string& container;      ///< IFormatFile::FORMAT_
    const std::string& standard;       ///< IFormatFile::TAG_DVD_STANDARD
    std::span<const FrameSize> sizes;  ///< the usual first
    boost::rational<int64_t> fps;      ///< frames per second
    int64_t buffer;                    ///< bits that a player's video buffer holds
    int64_t rate;                      ///< bits per second that a player reads; 0: as many as its streams have
    int64_t videoBitrate;              ///< bits per second of its video; 0: as the picture asks for
    bool isWide;                       ///< it may be shown at 16:9, else at 4:3 alone

    /// The record of the container and the television system in a format node; null for what is no disc.
    static const DiscRecord* Find(const Core::Property& format);
    /// Every disc, the two systems of each.
    static std::span<const DiscRecord> All();
};

/// The sample aspect ratio with which a television shows the frame at 4:3, or at 16:9 where that may be and is nearer
/// to the picture's shape (its width by its height, as it is seen).
KESTRO_CONFINT_API boost::rational<int64_t> TelevisionSampleAspectRatio(const FrameSize& frame, double pictureShape,
                                                                        bool mayBeWide);

}  // namespace Kestro::Conf
