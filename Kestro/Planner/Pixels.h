#pragma once

#include "Kestro/Planner/CheckedPreset.h"
#include "Kestro/Planner/Plan.h"

namespace Kestro::Planner {

/// What becomes of the pixels of a video stream that is encoded: samples of more than 8 bits stay so where the codec
/// can (a profile that nobody asked for makes way), high dynamic range that would not fit is brought to BT.709, and
/// fields become frames unless the output has them by nature, or they are asked for.
///
/// codec: the stream's codec node. What is chosen, and what is lost, is told in the account.
Pixels PlanPixels(const PresetStream& wanted, const MediaStream& source, const Core::Property& format,
                  Core::Property& codec, Account& account);

}  // namespace Kestro::Planner
