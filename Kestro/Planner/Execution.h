#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Kestro/Planner/Export.h"
#include "Kestro/Planner/FfmpegCommands.h"
#include "Kestro/Planner/Plan.h"

/// Before and after a plan is carried out.
namespace Kestro::Planner {

/// Throws NotAcceptable (NotInstalled) when the installed FFmpeg lacks the muxer or an encoder of the plan.
KESTRO_PLANNER_API void CheckInstalled(const Plan& plan);

/// What was written, as Probe finds it, without what muxers add of their own, such as the navigation data of a DVD.
/// Throws NotAcceptable (UnreadableInput) as Probe.
KESTRO_PLANNER_API MediaInfo ProbeOutput(const Plan& plan, const std::string& path);

/// How many seconds the output is expected to have; none where nobody can tell, as for pictures or a stream of a file
/// that has no length of its own for it.
KESTRO_PLANNER_API std::optional<double> ExpectedDuration(const Plan& plan, const Excerpt& excerpt = {});

/// "1.4 s of 3.0 s", where the written file is clearly shorter than expected: so much could be had of a damaged input.
KESTRO_PLANNER_API std::string Shortfall(const Plan& plan, const MediaInfo& written, const Excerpt& excerpt = {});

/// Where a written file is not what the plan says, a sentence each. Throws NotAcceptable (NoSuchStream) when its
/// streams are not those of the plan, or hold nothing.
KESTRO_PLANNER_API std::vector<std::string> Differences(const Plan& plan, const MediaInfo& written);

}  // namespace Kestro::Planner
