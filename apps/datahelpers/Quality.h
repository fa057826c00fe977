#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace App {

/// FFmpeg's options, name and value, for a quality 1..IFormatCodec::MAX_QUALITY, where the encoder has a mode of
/// constant quality: 1 is the coarsest that it can do, MAX_QUALITY what the eye or ear does not tell from the source. A
/// higher quality is never coarser. Empty for an encoder without such a mode; lossless ones are among them.
std::vector<std::pair<std::string, std::string>> QualityOptions(const std::string& encoder, int64_t quality);

}  // namespace App
