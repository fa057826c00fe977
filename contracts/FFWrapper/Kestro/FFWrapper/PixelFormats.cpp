#include "Kestro/FFWrapper/PixelFormats.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace Kestro::FFWrapper {

int BitDepth(const std::string& pixelFormat) {
    const AVPixFmtDescriptor* format = av_pix_fmt_desc_get(av_get_pix_fmt(pixelFormat.c_str()));
    return format != nullptr ? format->comp[0].depth : 0;
}

bool HasAlpha(const std::string& pixelFormat) {
    const AVPixFmtDescriptor* format = av_pix_fmt_desc_get(av_get_pix_fmt(pixelFormat.c_str()));
    return format != nullptr && (format->flags & AV_PIX_FMT_FLAG_ALPHA) != 0;
}

}  // namespace Kestro::FFWrapper
