#pragma once

#include <string>

#include "Kestro/Planner/Export.h"
#include "Kestro/Planner/MediaInfo.h"

namespace Kestro::Planner {

struct ProbeOptions {
    std::string picture = {};  ///< codec id of the one picture that the file is; some show in nothing but a file's name
    bool followReferences = false;  ///< files that a playlist or the like names are read, too; never from a network
};

/// Reads the headers of a regular file, and nothing but that file; takes no name for a pattern. FFmpeg writes what it
/// thinks of a file to standard error unless the application sets its log level: what matters is in the result.
/// Throws NotAcceptable (UnreadableInput) for what is no readable media file, and (OpensOtherFiles) for one that leads
/// to others.
KESTRO_PLANNER_API MediaInfo Probe(const std::string& path, const ProbeOptions& options = {});

/// The name as FFmpeg takes it: a file, whatever characters it has and begins with.
KESTRO_PLANNER_API std::string FileUrl(const std::string& path);

}  // namespace Kestro::Planner
