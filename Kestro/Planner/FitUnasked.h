#pragma once

#include "Kestro/Planner/Requirement.h"
#include "Kestro/Planner/StreamSettings.h"

namespace Kestro::Planner {

/// Whether the tree that rules run over keeps a requirement that applies to it. A filter that keeps the input's value
/// also satisfies a requirement that lets it.
bool IsMet(const Requirement& requirement, const StreamSettings& settings, const Core::Property& tree);

/// Why a value that is not accepted goes: the rule that it breaks, or, where the setting is left open, what takes the
/// place of the input's value and for whom.
std::string WhyMoved(const Requirement& broken, const Requirements& requirements, const StreamSettings& settings,
                     const Core::Property& tree);

/// Moves values that nobody asked for, the source's and defaults, into what encoder and container take.
/// codecKey: the codec node's; its own settings are left alone unless `codecSettingsToo`.
void FitUnasked(StreamSettings& settings, const Requirements& requirements, const std::string& codecKey,
                bool codecSettingsToo);

}  // namespace Kestro::Planner
