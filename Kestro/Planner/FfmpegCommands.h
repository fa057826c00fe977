#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Kestro/Planner/Export.h"
#include "Kestro/Planner/Plan.h"

namespace Kestro::Planner {

/// The arguments of one run of ffmpeg, without the program's name: an argument vector, for no shell.
using Command = std::vector<std::string>;

/// A piece of the input, in seconds.
struct Excerpt {
    double start = 0.0;
    std::optional<double> duration = {};  ///< none: to the end

    /// How long it is in an input of that length; none: it is not known.
    KESTRO_PLANNER_API std::optional<double> Of(std::optional<double> inputDuration) const;
};

struct CommandOptions {
    std::string workFolder = {};  ///< where a run leaves what a later one reads
    std::string input = {};       ///< where the input is, if not at the path of the plan's
    bool isSequence = false;      ///< the output is the folder of all pictures, where Plan::IsPicture()
    Excerpt excerpt = {};
    bool isWatched = true;  ///< by a program; otherwise ffmpeg talks to the person who typed the command
};

/// Whether a stream asks for two passes over the source.
KESTRO_PLANNER_API bool IsTwoPass(const Plan& plan);

/// Whether a run leaves something for a later one, in the work folder.
KESTRO_PLANNER_API bool NeedsWorkFolder(const Plan& plan);

/// The runs of ffmpeg that make the plan's output, in order: one over the input, or two where IsTwoPass; before those,
/// short ones that take out the covers which the output has as attached files.
///
/// For a program that watches, progress goes to standard output as FFmpeg's `-progress` has it, every message bears its
/// level ("[error]"), and where the input leads to other files ffmpeg names them as it opens them. Throws NotAcceptable
/// (InvalidPlan) for a plan whose settings are not those of a plan, or hold texts that the vocabulary does not know.
KESTRO_PLANNER_API std::vector<Command> FfmpegCommands(const Plan& plan, const std::string& output,
                                                       const CommandOptions& options = {});

/// The name of a picture of a sequence in its folder, counted from 1.
KESTRO_PLANNER_API std::string PictureName(const Plan& plan, int number);

}  // namespace Kestro::Planner
