#pragma once

#include <string>

#include "Kestro/Export.h"

namespace Kestro::FFWrapper {

/// FFmpeg's short name of the muxer that writes a container of Conf::IFormatFile: the container's own name, but for
/// those under which FFmpeg has no muxer, or one for a bare stream.
KESTRO_FFWRAPPER_API const std::string& MuxerNameFromFormatName(const std::string& formatName);

}  // namespace Kestro::FFWrapper
