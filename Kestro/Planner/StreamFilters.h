#pragma once

#include "Kestro/Planner/CheckedPreset.h"
#include "Kestro/Planner/Requirement.h"
#include "Kestro/Planner/StreamSettings.h"

namespace Kestro::Planner {

/// Gives the stream the filters that its encoder needs and its preset mentions, and tells what they require.
void CollectFilters(const PresetStream& stream, const Conf::IDataHelper& encoder, StreamSettings& settings,
                    Requirements& requirements);

/// Throws NotAcceptable (ValueNotAccepted) for a value that its filter does not take. What a filter asks for by a rule
/// is not refused: ApplyFilters follows it, as by making a size even.
void CheckFilters(const Requirements& requirements, StreamSettings& settings);

/// Lets the filters bring the source's values to what is asked of them.
void ApplyFilters(const PresetStream& stream, const Requirements& requirements, StreamSettings& settings);

}  // namespace Kestro::Planner
