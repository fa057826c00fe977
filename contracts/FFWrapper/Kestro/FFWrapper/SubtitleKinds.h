#pragma once

#include <string>

#include "Kestro/Export.h"

namespace Kestro::FFWrapper {

/// Whether FFmpeg calls the codec one of subtitles that are texts; such can be converted into each other.
KESTRO_FFWRAPPER_API bool IsTextSubtitle(const std::string& codecId);

/// FFmpeg's own name of a codec: the vocabulary has two for some subtitles ("srt" is "subrip"). Empty for a codec that
/// FFmpeg does not know.
KESTRO_FFWRAPPER_API std::string DescriptorName(const std::string& codecId);

}  // namespace Kestro::FFWrapper
