#pragma once

#include <string>

#include "Kestro/Export.h"

namespace Kestro::FFWrapper {

/// Name of the FFmpeg encoder to use for a codec id (see CodecIDFromTextID): the preferred one of those that the
/// installed FFmpeg has, else FFmpeg's own choice. Empty when it has none.
KESTRO_FFWRAPPER_API std::string EncoderNameFromCodecId(const std::string& codecId);

}  // namespace Kestro::FFWrapper
