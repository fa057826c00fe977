#pragma once

#include <string>

#include "Kestro/Core/Property.h"
#include "Kestro/Export.h"

namespace Kestro::FFWrapper {

/// FFmpeg's muxer for a container of the registry. Beyond MuxerNameFromFormatName it knows the containers whose own
/// name is not one of FFmpeg's muxers, single pictures among them.
KESTRO_FFWRAPPER_API std::string MuxerName(const std::string& container);
/// The same for a format node (Conf::IPreset::KEY_FORMAT), whose other settings may ask for a variant of the container.
KESTRO_FFWRAPPER_API std::string MuxerName(const Core::Property& format);

/// Whether the installed FFmpeg has the muxer.
KESTRO_FFWRAPPER_API bool MuxerExists(const std::string& muxer);
/// Whether the muxer writes a single picture to a file. The demuxer of that name takes file names for patterns.
KESTRO_FFWRAPPER_API bool IsImageMuxer(const std::string& muxer);
/// How the files of a picture codec end: "jpg".
KESTRO_FFWRAPPER_API std::string PictureExtension(const std::string& codecId);
/// The media type (RFC 2046) under which a container keeps a cover picture of the codec as a file; empty for a codec
/// that players do not look for there.
KESTRO_FFWRAPPER_API std::string CoverMediaType(const std::string& codecId);

/// How the files of a container of the registry end: "mkv".
KESTRO_FFWRAPPER_API std::string FileExtension(const std::string& container);

}  // namespace Kestro::FFWrapper
