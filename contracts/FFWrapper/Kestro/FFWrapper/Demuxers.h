#pragma once

#include <string>

#include "Kestro/Export.h"

namespace Kestro::FFWrapper {

/// Whether FFmpeg's demuxer of that name (AVInputFormat::name) opens, beside the file that it is given, others that the
/// file names or that are named like it.
KESTRO_FFWRAPPER_API bool OpensOtherFiles(const std::string& demuxer);

/// Whether FFmpeg has a demuxer of that name for files; devices are none.
KESTRO_FFWRAPPER_API bool DemuxerExists(const std::string& demuxer);

/// The name by which a demuxer is asked for: of several ("mov,mp4,m4a") the first.
KESTRO_FFWRAPPER_API std::string DemuxerOption(const std::string& demuxer);

}  // namespace Kestro::FFWrapper
