#include "Kestro/FFWrapper/EncoderNameFromCodecId.h"

#include "Kestro/FFWrapper/FindEncoder.h"

namespace Kestro::FFWrapper {

std::string EncoderNameFromCodecId(const std::string& codecId) {
    const AVCodec* encoder = FindEncoder(codecId);
    return encoder != nullptr ? encoder->name : std::string();
}

}  // namespace Kestro::FFWrapper
