#pragma once

#include "Kestro/Planner/Requirement.h"
#include "Kestro/Planner/StreamSettings.h"

namespace Kestro::Planner {

/// Completes the rate control of a video stream whose preset leaves it open, in the preset's codec node; what is chosen
/// is told in the settings' ledger.
///
/// - Neither mode, bitrate nor quality: constant quality where the encoder has it, with the key frames and B-frames
///   that it is good with; else, and for discs, the bitrate that is usual for size and rate.
/// - A bitrate without a mode, or a quality without one: the mode that heeds it.
/// - A constant bitrate without a number: the usual one.
///
/// False when there is nothing to choose: the codec loses nothing, or the preset says all.
bool CompleteRateControl(const PresetStream& stream, const Conf::IDataHelper& encoder, const Requirements& requirements,
                         StreamSettings& settings, Core::Property& preset);

/// Moves the numbers of the codec node that the preset asks for and the encoder or the container does not take to the
/// nearest that they take, before the library would put defaults in their place. Throws NotAcceptable
/// (ValueNotAccepted) where the nearest is of another magnitude.
void MoveAskedToNearest(const std::string& codecKey, const Requirements& requirements, StreamSettings& settings);

/// Whether a rate of samples or frames that is asked for and cannot be had is moved to the nearest: that is of its
/// magnitude.
bool IsMovableRate(const std::string& tag, const Core::Property& asked, const Core::Property& nearest);

}  // namespace Kestro::Planner
