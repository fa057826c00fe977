#pragma once

#include <string>

#include "Kestro/Planner/Plan.h"

namespace Kestro::Planner {

/// FFmpeg's chain of filters that brings the source of a planned stream to its settings; empty: none is needed. Texts
/// of the settings come into it only if the vocabulary knows them, since a filter can open files. Throws NotAcceptable
/// (InvalidPlan) for others.
std::string FilterGraph(const Plan& plan, std::size_t stream);

}  // namespace Kestro::Planner
