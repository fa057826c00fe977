#pragma once

#include <cstdint>  // FFmpeg's headers insist on its macros
#include <string>

extern "C" {
#include <libavcodec/codec_id.h>
}

#include "Kestro/Export.h"

namespace Kestro::FFWrapper {

/// Whether FFmpeg's encoder for a codec takes pixels of that format, an FFmpeg name. True of a codec that has no
/// encoder, or whose encoder does not tell; false of a name that FFmpeg does not know. Allocates nothing.
KESTRO_FFWRAPPER_API bool EncoderTakesPixelFormat(AVCodecID codec, const std::string& pixelFormat);

}  // namespace Kestro::FFWrapper
