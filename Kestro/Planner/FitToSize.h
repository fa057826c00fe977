#pragma once

#include <functional>

#include "Kestro/Planner/Plan.h"
#include "Kestro/Planner/Preset.h"

namespace Kestro::Planner {

/// The plan, made without the limit that it has, as one that keeps to it: the video gets what sound and container
/// leave, in two passes where its encoder has them; sound that nobody asked about takes a fifth of all at most; rate
/// and size of frames go down, unless asked for, while they would make of the bitrate less than the coarsest quality
/// comes to. settle: makes a plan of a preset. Throws NotAcceptable (ValueNotAccepted, with the smallest size that can
/// be had).
Plan FitToSize(const Plan& plan, const Preset& preset, const std::function<Plan(const Preset&)>& settle);

}  // namespace Kestro::Planner
