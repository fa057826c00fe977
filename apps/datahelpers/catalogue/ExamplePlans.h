#pragma once

#include "catalogue/Knowledge.h"
#include "report/ReportJson.h"

namespace App::Catalogue {

/// What the planner makes of one film in every container, with every video and audio codec that it offers:
///
///     input       lines that describe the film
///     labels      of settings, by their last name: [label, unit]
///     containers  by name: { video: [codec], audio: [codec], plans: [number] }, the audio codecs of the first video
///                 codec first; a kind that the container does not take has the one codec ""
///     plans       { streams, choices, corrections, notes: [number of an item], convert, commands } or { refused }
///     items       streams, choices and the like, which many plans have in common
Json ExamplePlans(const Knowledge& knowledge);

}  // namespace App::Catalogue
