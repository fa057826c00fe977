#pragma once

#include <string>
#include <vector>

#include "Kestro/Conf/StreamType.h"
#include "Kestro/Core/Property.h"
#include "Kestro/Planner/Export.h"

namespace Kestro::Planner {

/// Whether a container stores a codec.
struct Fit {
    std::string codec;
    std::string container;
    std::string muxer;      ///< FFmpeg's, which was asked; empty when it has none for the container
    bool ownMuxer = false;  ///< it bears the container's name. CodecIsSupported knows few other names
    bool fits = false;
    bool isOffered = false;  ///< the container's helper offers to encode with it; else streams of it can only be copied
    std::string reason;      ///< of a no
};

/// The codecs that the container's helper offers for a kind of stream; none where it has no such stream. Throws
/// NotAcceptable (UnknownName).
KESTRO_PLANNER_API std::vector<std::string> OfferedCodecs(const std::string& container, Conf::StreamType type);

/// What the library says of a codec node's stream in what that muxer writes; the codec's tag is left to the muxer.
bool MuxerTakes(const std::string& muxer, const Kestro::Core::Property& codec);

/// One codec in one container, or either with all of the other when it is empty. Throws NotAcceptable (UnknownName) for
/// names that the library does not know.
KESTRO_PLANNER_API std::vector<Fit> FindFits(const std::string& codec, const std::string& container);

}  // namespace Kestro::Planner
