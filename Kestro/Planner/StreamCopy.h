#pragma once

#include <string>

#include "Kestro/Core/Property.h"
#include "Kestro/Planner/CheckedPreset.h"
#include "Kestro/Planner/MediaInfo.h"
#include "Kestro/Planner/Plan.h"

namespace Kestro::Planner {

/// Whether the stream may be copied if the container stores it: its codec is left open, and nothing else is asked that
/// encoding alone gives.
bool MayBeCopied(const PresetStream& wanted);

/// What keeps the source's stream from being stored in the plan's container as it is; empty: nothing.
/// A copy that is asked for goes by the muxer alone, one of the planner's choice by the container's helper, too.
std::string CopyObstacle(const CheckedPreset& preset, const PresetStream& wanted, const MediaStream& source,
                         const Plan& plan);

/// { TypeId, codec node } of a stream that is copied: what is known of it.
Core::Property CopiedNode(const Conf::StreamRecord& kind, const MediaStream& source, const std::string& codecId);

}  // namespace Kestro::Planner
