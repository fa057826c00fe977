#pragma once

#include <string>

#include "Kestro/Core/Property.h"
#include "Kestro/Planner/Export.h"
#include "Kestro/Planner/MediaInfo.h"
#include "Kestro/Planner/Plan.h"

/// Plans and what they are made of as JSON texts, UTF-8; bytes of file names that are no UTF-8 are replaced by U+FFFD.
namespace Kestro::Planner {

/// { input, container, muxer, globalHeader, streams, settings, choices, corrections, notes, sizeLimit }.
KESTRO_PLANNER_API std::string ToJson(const Plan& plan);
/// { path, demuxer, duration, streams }.
KESTRO_PLANNER_API std::string ToJson(const MediaInfo& media);
/// A settings tree: nodes are objects, the list of streams is an array, ratios are texts. A single value is its text.
KESTRO_PLANNER_API std::string ToJson(const Core::Property& settings);

/// The plan of such a text, which may have been made on another machine: its input's path is for the caller to change,
/// and its encoders are those of the machine that made it (see CheckInstalled). Members that are not known are ignored.
/// Throws NotAcceptable: InvalidJson, InvalidPlan with the member that is missing or of another kind, UnknownName.
KESTRO_PLANNER_API Plan PlanFromJson(const std::string& text);

}  // namespace Kestro::Planner
