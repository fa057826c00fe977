#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Plan.h"
#include "Progress.h"

namespace App {

/// What a conversion left behind.
struct Conversion {
    std::string output;
    int64_t size = 0;  ///< bytes, of all pictures of a sequence
    int files = 1;     ///< pictures of a sequence
    MediaInfo written;
    std::vector<std::string> differences;  ///< where the file is not what the plan says
    std::vector<std::string> messages;     ///< what ffmpeg had to say
};

/// Whether the plan can be carried out here: the program ffmpeg and its encoders are there. Throws Failure.
void CheckConverter(const Plan& plan);

/// Runs ffmpeg. The output appears when it is complete; whatever goes wrong before that leaves nothing behind and
/// throws Failure (ConversionFailed).
Conversion Convert(const Plan& plan, const std::string& output, Progress::Style style);

/// The same for all pictures of the input, in a new folder, where the plan's container is one of pictures. Throws
/// Failure (NotAcceptable) for another container, and (WrongUsage) where there is something of that name.
Conversion ConvertToSequence(const Plan& plan, const std::string& folder, Progress::Style style);

}  // namespace App
