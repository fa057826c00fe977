#pragma once

#include <boost/rational.hpp>
#include <cstdint>
#include <optional>
#include <string>

#include "Kestro/Planner/Export.h"
#include "Kestro/Planner/MediaInfo.h"

namespace Kestro::Planner {

struct ProbeOptions {
    std::string picture = {};  ///< codec id of the one picture that the file is; some show in nothing but a file's name
    bool followReferences = false;  ///< files that a playlist or the like names are read, too; never from a network
    std::string name = {};          ///< what messages and the result call the file; empty: its path
    /// The path is a pattern, with %d or %06d for the number of a picture, and so many are shown a second.
    std::optional<boost::rational<int64_t>> picturesPerSecond = {};
};

/// Reads the headers of a regular file, and nothing but that file, or the pictures of a sequence. FFmpeg writes what it
/// thinks of a file to standard error unless the application sets its log level: what matters is in the result.
/// Throws NotAcceptable (UnreadableInput) for what is no readable media file, and (OpensOtherFiles) for one that leads
/// to others.
KESTRO_PLANNER_API MediaInfo Probe(const std::string& path, const ProbeOptions& options = {});

/// The name as FFmpeg takes it: a file, whatever characters it has and begins with.
KESTRO_PLANNER_API std::string FileUrl(const std::string& path);

}  // namespace Kestro::Planner
