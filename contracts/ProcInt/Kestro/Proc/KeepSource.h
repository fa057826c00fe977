#pragma once

#include <string>

#include "Kestro/Core/Property.h"
#include "Kestro/Export.h"

/// The values with which a filter's settings keep what the source has: sample rate -1, layout "unknown" and the like.
namespace Kestro::Proc {

/// That value of the setting with the tag; null for a setting that has none.
KESTRO_PROCINT_API const Core::Property* SourceValue(const std::string& tag);

KESTRO_PROCINT_API bool IsSourceValue(const std::string& tag, const Core::Property& value);

/// Gives every setting below a filter's node that value, where it has one.
KESTRO_PROCINT_API void KeepSource(Core::Property& settings);

}  // namespace Kestro::Proc
