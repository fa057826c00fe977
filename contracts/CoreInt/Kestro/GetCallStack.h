#pragma once

#include <string>

#include "Kestro/Export.h"

namespace Kestro {

/// The caller's call stack, innermost frame first, a line a frame, at most 64 frames. Safe on any thread.
KESTRO_COREINT_API std::string GetCallStack();

}  // namespace Kestro
