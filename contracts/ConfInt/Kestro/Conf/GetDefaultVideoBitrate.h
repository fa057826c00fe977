#pragma once

#include <cstdint>
#include <string>

#include "Kestro/Export.h"

namespace Kestro::Conf {

/// The video bitrate to start from, bit/s, always inside IFormatCodecVideo::MIN_VIDEO_BITRATE..MAX_VIDEO_BITRATE.
///
/// For H.264 it is what video platforms ask of uploads (see the source), other codecs take a share or a multiple of
/// that; an unknown codec id counts as H.264. The bitrate grows with the frame's area, the frame rate and the quality,
/// and doubles every 25 steps of quality.
///
/// - width, height: pixels; less than 1 counts as 1.
/// - framesPerSecond: what is not a positive number counts as 30 (no rate is known).
/// - quality: 1..IFormatCodec::MAX_QUALITY, more counts as MAX_QUALITY; 0 and less, usually -1, is no quality, as 50.
KESTRO_CONFINT_API int64_t GetDefaultVideoBitrate(const std::string& codecId, int64_t width, int64_t height,
                                                  double framesPerSecond, int quality);

}  // namespace Kestro::Conf
