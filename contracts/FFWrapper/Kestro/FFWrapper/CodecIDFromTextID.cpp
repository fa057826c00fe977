#include "Kestro/FFWrapper/CodecIDFromTextID.h"

#include <string_view>
#include <unordered_map>

extern "C" {
#include <libavcodec/codec_desc.h>
}

#include "Kestro/Conf/IFormatCodecSubtitle.h"
#include "Kestro/UntilUnload.h"

namespace Kestro::FFWrapper {
namespace {

using Ids = std::unordered_map<std::string_view, AVCodecID>;

Ids MakeIds() {
    Ids ids;
    const AVCodecDescriptor* descriptor = nullptr;
    while ((descriptor = avcodec_descriptor_next(descriptor)) != nullptr) ids.emplace(descriptor->name, descriptor->id);
    ids[Conf::IFormatCodecSubtitle::CODEC_ID_SRT] = AV_CODEC_ID_SUBRIP;
    ids[Conf::IFormatCodecSubtitle::CODEC_ID_SSA] = AV_CODEC_ID_ASS;
    return ids;
}

}  // namespace

AVCodecID CodecIDFromTextID(const std::string& codecId) {
    static const Ids& ids = UntilUnload(MakeIds());  // FFmpeg itself looks through all of them
    const auto found = ids.find(codecId);
    return found != ids.end() ? found->second : AV_CODEC_ID_NONE;
}

}  // namespace Kestro::FFWrapper
