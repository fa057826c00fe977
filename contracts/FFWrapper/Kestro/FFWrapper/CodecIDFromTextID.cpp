#include "Kestro/FFWrapper/CodecIDFromTextID.h"

extern "C" {
#include <libavcodec/codec_desc.h>
}

#include "Kestro/Conf/IFormatCodecSubtitle.h"

namespace Kestro::FFWrapper {

AVCodecID CodecIDFromTextID(const std::string& codecId) {
    if (codecId == Conf::IFormatCodecSubtitle::CODEC_ID_SRT) return AV_CODEC_ID_SUBRIP;
    if (codecId == Conf::IFormatCodecSubtitle::CODEC_ID_SSA) return AV_CODEC_ID_ASS;
    const AVCodecDescriptor* descriptor = avcodec_descriptor_get_by_name(codecId.c_str());
    // A text with a zero inside is not the name before the zero.
    return descriptor != nullptr && codecId == descriptor->name ? descriptor->id : AV_CODEC_ID_NONE;
}

}  // namespace Kestro::FFWrapper
