#pragma once

#include <string>

#include "Kestro/Export.h"

namespace Kestro::FFWrapper {

/// Bits of a colour's sample in a pixel format of FFmpeg's; 0 for a name that FFmpeg does not know.
KESTRO_FFWRAPPER_API int BitDepth(const std::string& pixelFormat);
/// Whether its pixels may be transparent.
KESTRO_FFWRAPPER_API bool HasAlpha(const std::string& pixelFormat);

}  // namespace Kestro::FFWrapper
