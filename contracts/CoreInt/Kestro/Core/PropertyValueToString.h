#pragma once

#include <string>

#include "Kestro/Core/Property.h"

namespace Kestro::Core {

/// The text of a scalar value, as Property reads it back: "true", "2.5", "-1", "30000/1001". Empty for a node without a
/// value.
KESTRO_COREINT_API std::string PropertyValueToString(const Property& property);

}  // namespace Kestro::Core
