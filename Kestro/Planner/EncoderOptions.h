#pragma once

#include <string>
#include <vector>

#include "Kestro/FFWrapper/EncoderRecord.h"
#include "Kestro/Planner/Plan.h"

namespace Kestro::Planner {

/// Whether the stream of that codec node is made in two passes over the source.
bool IsTwoPass(const Core::Property& codec);

/// Whether the encoder keeps a quality in the stream of that codec node, whatever bitrate that takes.
bool IsByQuality(const Core::Property& codec, const FFWrapper::EncoderRecord* encoder);

/// One of two passes over the source; number 0 when there is but one.
struct Pass {
    int number = 0;
    std::string directory = {};  ///< where the first leaves what the second reads
};

/// FFmpeg's arguments for a planned stream that is the output's stream of that index.
void AddEncoderOptions(const Plan& plan, std::size_t stream, std::size_t index, const Pass& pass,
                       std::vector<std::string>& arguments);

}  // namespace Kestro::Planner
