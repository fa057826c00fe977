#pragma once

#include <span>

#include "Kestro/Conf/DataHelpers/Sheet.h"
#include "Kestro/Conf/IFormatCodecAudio.h"

namespace Kestro::Conf {

/// The channel layouts that the resampler offers by name, with TAG_CH_LAYOUT_UNKNOWN for the source's own.
inline constexpr Text kResamplerLayouts[] = {IFormatCodecAudio::TAG_CH_LAYOUT_UNKNOWN,
                                             IFormatCodecAudio::TAG_CH_LAYOUT_MONO,
                                             IFormatCodecAudio::TAG_CH_LAYOUT_STEREO};
inline constexpr std::span<const Text> kMonoAndStereoNames = std::span(kResamplerLayouts).subspan(1);

}  // namespace Kestro::Conf
