#pragma once

#include "Kestro/Planner/Export.h"
#include "Kestro/Planner/MediaInfo.h"
#include "Kestro/Planner/Plan.h"
#include "Kestro/Planner/Preset.h"

namespace Kestro::Planner {

/// Settles every setting of the input's conversion. Throws NotAcceptable: with everything that Check finds, or with the
/// setting that the helpers neither accept nor correct.
KESTRO_PLANNER_API Plan MakePlan(const MediaInfo& input, const Preset& preset);

}  // namespace Kestro::Planner
