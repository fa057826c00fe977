#pragma once

#include <string>

extern "C" {
#include <libavcodec/codec.h>
}

namespace Kestro::FFWrapper {

/// The encoder that EncoderNameFromCodecId names; null where it names none. Allocates nothing.
const AVCodec* FindEncoder(const std::string& codecId);

}  // namespace Kestro::FFWrapper
