#pragma once

#include <string>
#include <vector>

#include "Kestro/Planner/Export.h"
#include "Kestro/Planner/Plan.h"

/// Before and after a plan is carried out.
namespace Kestro::Planner {

/// Throws NotAcceptable (NotInstalled) when the installed FFmpeg lacks the muxer or an encoder of the plan.
KESTRO_PLANNER_API void CheckInstalled(const Plan& plan);

/// What was written, as Probe finds it, without what muxers add of their own, such as the navigation data of a DVD.
/// Throws NotAcceptable (UnreadableInput) as Probe.
KESTRO_PLANNER_API MediaInfo ProbeOutput(const Plan& plan, const std::string& path);

/// Where a written file is not what the plan says, a sentence each. Throws NotAcceptable (NoSuchStream) when its
/// streams are not those of the plan.
KESTRO_PLANNER_API std::vector<std::string> Differences(const Plan& plan, const MediaInfo& written);

}  // namespace Kestro::Planner
