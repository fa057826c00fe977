#pragma once

#include <string>
#include <vector>

#include "Kestro/Export.h"

namespace Kestro::FFWrapper {

/// What people call a container, or how they let its files end ("mkv", "jpg"), as the registry names it ("matroska",
/// "image2"); empty for a word that is none of these. Case does not matter.
KESTRO_FFWRAPPER_API std::string ContainerOfEverydayName(const std::string& word);

/// What people call a codec ("h265", "x264", "H.264"), or FFmpeg one of its encoders ("libx264"), as a codec id; empty
/// for another word.
KESTRO_FFWRAPPER_API std::string CodecOfEverydayName(const std::string& word);

/// The words for which the first of these gives that container (the second gives that codec, encoders' names apart).
KESTRO_FFWRAPPER_API std::vector<std::string> EverydayNamesOfContainer(const std::string& container);
KESTRO_FFWRAPPER_API std::vector<std::string> EverydayNamesOfCodec(const std::string& codecId);

}  // namespace Kestro::FFWrapper
