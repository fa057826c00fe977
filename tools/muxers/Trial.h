#pragma once

#include <string>
#include <vector>

#include "tools/muxers/Samples.h"

namespace Measure {

/// Samples that are written as the streams of one file, in that order.
using Way = std::vector<const Sample*>;

/// Whether the muxer writes a sample in one of these ways, each of which holds it, so that the container's demuxer
/// reads the same codec and, of audio, sample rate and channels. Writes files in the folder.
bool IsStored(const std::string& muxer, const std::vector<Way>& ways, const Sample& sample, const std::string& folder);

}  // namespace Measure
