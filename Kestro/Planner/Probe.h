#pragma once

#include <string>

#include "Kestro/Planner/Export.h"
#include "Kestro/Planner/MediaInfo.h"

namespace Kestro::Planner {

/// Reads the headers of a regular file; follows no name that stands in it, takes no name for a pattern. FFmpeg writes
/// what it thinks of a file to standard error unless the application sets its log level: what matters is in the result.
/// Throws NotAcceptable (UnreadableInput) for what is no readable media file.
/// picture: the codec id of the one picture that the file is; some codecs show in nothing but a file's name.
KESTRO_PLANNER_API MediaInfo Probe(const std::string& path, const std::string& picture = {});

/// The name as FFmpeg takes it: a file, whatever characters it has and begins with.
KESTRO_PLANNER_API std::string FileUrl(const std::string& path);

}  // namespace Kestro::Planner
