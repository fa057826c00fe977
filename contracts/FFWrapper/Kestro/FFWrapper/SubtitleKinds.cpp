#include "Kestro/FFWrapper/SubtitleKinds.h"

extern "C" {
#include <libavcodec/codec_desc.h>
}

#include "Kestro/FFWrapper/CodecIDFromTextID.h"

namespace Kestro::FFWrapper {

bool IsTextSubtitle(const std::string& codecId) {
    const AVCodecDescriptor* codec = avcodec_descriptor_get(CodecIDFromTextID(codecId));
    return codec != nullptr && (codec->props & AV_CODEC_PROP_TEXT_SUB) != 0;
}

std::string DescriptorName(const std::string& codecId) {
    const AVCodecDescriptor* codec = avcodec_descriptor_get(CodecIDFromTextID(codecId));
    return codec != nullptr ? codec->name : std::string();
}

}  // namespace Kestro::FFWrapper
