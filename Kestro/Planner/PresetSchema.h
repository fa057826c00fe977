#pragma once

#include <string>

#include "Kestro/Planner/Export.h"

namespace Kestro::Planner {

/// A JSON Schema (2020-12) of presets for that container, or of all presets without one: what Preset::FromJson and
/// Check take of settings, values and their combinations, with labels, help and defaults for the editors that complete
/// and check by it. Where it goes by the input or by the installed FFmpeg whether a value can be had, it stays open.
///
/// Throws NotAcceptable (UnknownName) for a container that there is not.
KESTRO_PLANNER_API std::string PresetSchema(const std::string& container = {});

}  // namespace Kestro::Planner
