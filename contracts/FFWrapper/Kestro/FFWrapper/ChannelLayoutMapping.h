#pragma once

#include <cstdint>

#include "Kestro/Conf/ChannelLayout.h"
#include "Kestro/Export.h"

namespace Kestro::FFWrapper {

/// Whether a layout of Conf::LayoutRecord has that FFmpeg channel mask (AV_CH_LAYOUT_...).
KESTRO_FFWRAPPER_API bool ChannelLayoutFFMPEGIsSupported(uint64_t mask);

/// The layout with that FFmpeg channel mask; ChannelLayout::Unknown when there is none.
KESTRO_FFWRAPPER_API Conf::ChannelLayout ChannelLayoutKestroFromFFMPEG(uint64_t mask);

}  // namespace Kestro::FFWrapper
