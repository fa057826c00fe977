#pragma once

#include "Kestro/Planner/Requirement.h"
#include "Kestro/Planner/StreamSettings.h"

namespace Kestro::Planner {

/// Applies the codec settings of a preset to the stream, completed where they leave the rate control open. isComplete:
/// the preset comes from a text, so a default is worth telling. Throws NotAcceptable.
void ApplyEncoderPreset(const PresetStream& stream, bool isComplete, const Conf::IDataHelper& encoder,
                        const Requirements& requirements, StreamSettings& settings);

}  // namespace Kestro::Planner
