#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Kestro/Planner/FfmpegCommands.h"
#include "Kestro/Planner/Plan.h"

#include "convert/OpenedFiles.h"
#include "convert/Progress.h"

namespace App {

namespace Planner = Kestro::Planner;

/// What a conversion left behind.
struct Conversion {
    std::string output;
    int64_t size = 0;  ///< bytes, of all pictures of a sequence
    int files = 1;     ///< pictures of a sequence
    Planner::MediaInfo written;
    std::vector<std::string> differences;  ///< where the file is not what the plan says
    std::string shortfall;                 ///< "1.4 s of 3.0 s" of a damaged input; empty: all of it
    std::vector<std::string> messages;     ///< what ffmpeg called errors
    OpenedFiles opened;                    ///< beside the input; known where it leads to others
};

struct ConvertOptions {
    bool overwrite = false;
    Progress::Style style = Progress::Style::None;
    Planner::Excerpt excerpt = {};
    std::string input = {};  ///< where the input is, if not at the path of the plan's
};

/// Throws Failure (ConversionFailed) when the program ffmpeg is not there.
void CheckConverter();

/// Runs ffmpeg. The output appears when it is complete; whatever goes wrong before that leaves nothing behind and
/// throws Failure (ConversionFailed).
Conversion Convert(const Planner::Plan& plan, const std::string& output, const ConvertOptions& options);

/// The same; what is complete goes to standard output.
Conversion ConvertToStandardOutput(const Planner::Plan& plan, const ConvertOptions& options);

/// The same for all pictures of the input, in a new folder, where the plan's container is one of pictures. Throws
/// Failure (NotAcceptable) for another container, and (WrongUsage) where there is something of that name.
Conversion ConvertToSequence(const Planner::Plan& plan, const std::string& folder, const ConvertOptions& options);

}  // namespace App
