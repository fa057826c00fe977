#pragma once

#include <string>
#include <vector>

#include "Plan.h"

namespace App {

using ArgumentList = std::vector<std::string>;

/// Whether a stream asks for two passes over the source.
bool IsTwoPass(const Plan& plan);

/// The arguments (without the program's name) of the ffmpeg runs that make the plan's output, in order: one, or two
/// where a stream asks for two passes. Progress is written to standard output as FFmpeg's `-progress` has it.
/// passDirectory: where the first pass leaves what the second reads; used for two passes alone.
/// isSequence: the output is the folder of all pictures, where the container is one of pictures.
std::vector<ArgumentList> FfmpegRuns(const Plan& plan, const std::string& output, const std::string& passDirectory,
                                     bool isSequence = false);

/// The name of a picture of a sequence in its folder, counted from 1.
std::string PictureName(const Plan& plan, int number);

}  // namespace App
