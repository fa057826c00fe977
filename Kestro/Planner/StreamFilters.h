#pragma once

#include "Kestro/Planner/CheckedPreset.h"
#include "Kestro/Planner/Requirement.h"
#include "Kestro/Planner/StreamSettings.h"

namespace Kestro::Planner {

/// Gives the stream the filters that its encoder needs and its preset mentions, and tells what they require.
void CollectFilters(const PresetStream& stream, const Conf::IDataHelper& encoder, StreamSettings& settings,
                    Requirements& requirements);

/// Throws NotAcceptable (ValueNotAccepted) for what is asked of a filter that takes no such value. What filters require
/// by rules they keep themselves: sizes, for one, are made even.
void CheckFilters(const Requirements& requirements, StreamSettings& settings);

/// Lets the filters bring the source's values to what is asked of them.
void ApplyFilters(const PresetStream& stream, const Requirements& requirements, StreamSettings& settings);

}  // namespace Kestro::Planner
