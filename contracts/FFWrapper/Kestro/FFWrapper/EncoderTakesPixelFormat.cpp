#include "Kestro/FFWrapper/EncoderTakesPixelFormat.h"

#include <algorithm>

extern "C" {
#include <libavutil/pixdesc.h>
}

#include "Kestro/FFWrapper/FindEncoder.h"
#include "Kestro/FFWrapper/SupportedValues.h"

namespace Kestro::FFWrapper {

bool EncoderTakesPixelFormat(const std::string& codecId, const std::string& pixelFormat) {
    const AVPixelFormat format = av_get_pix_fmt(pixelFormat.c_str());
    if (format == AV_PIX_FMT_NONE) return false;
    const AVCodec* encoder = FindEncoder(codecId);
    if (encoder == nullptr) return true;
    const auto formats = PixelFormats(*encoder);
    return formats.empty() || std::find(formats.begin(), formats.end(), format) != formats.end();
}

}  // namespace Kestro::FFWrapper
