#pragma once

#include <vector>

#include "Kestro/Planner/MediaInfo.h"

struct AVFormatContext;
struct AVStream;

namespace Kestro::Planner {

/// What the file's headers tell of the stream.
MediaStream DescribeStream(AVFormatContext& context, AVStream& stream);

/// Adds what the headers leave open and the first frames tell: whether they are interlaced, and for which display they
/// were graded. Reads packets, so it comes last. streams: those of the file, in its order. False: there are no packets.
bool LookAtFrames(AVFormatContext& context, std::vector<MediaStream>& streams);

}  // namespace Kestro::Planner
