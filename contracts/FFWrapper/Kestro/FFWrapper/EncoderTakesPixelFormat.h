#pragma once

#include <cstdint>  // FFmpeg's headers insist on its macros
#include <string>

#include "Kestro/Export.h"

namespace Kestro::FFWrapper {

/// Whether the encoder that EncoderNameFromCodecId names for a codec takes pixels of that format, an FFmpeg name. True
/// of a codec that has no encoder, or whose encoder does not tell; false of a name that FFmpeg does not know. Allocates
/// nothing.
KESTRO_FFWRAPPER_API bool EncoderTakesPixelFormat(const std::string& codecId, const std::string& pixelFormat);

}  // namespace Kestro::FFWrapper
