#pragma once

#include <string>

#include "Kestro/Core/Property.h"

namespace App {

/// FFmpeg's muxer for a container of the registry: the one that writes it where FFmpeg knows it by another name.
std::string MuxerName(const std::string& container);
/// The same for a preset's format node, whose other settings may ask for a variant of the container.
std::string MuxerName(const Kestro::Core::Property& format);

/// Whether the installed FFmpeg has the muxer.
bool MuxerExists(const std::string& muxer);
/// Whether the muxer writes the family of files that can have their index moved to the front.
bool HasMovableIndex(const std::string& muxer);
/// Whether the muxer writes a single picture to a file.
bool IsImageMuxer(const std::string& muxer);

}  // namespace App
