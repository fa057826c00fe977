#pragma once

#include <string>

#include "catalogue/Curve.h"
#include "catalogue/Markup.h"

namespace App::Catalogue {

/// The drawing of the curve's first block, and all of it as tables; a few words where all of it is level.
Markup Plot(const Curve& curve, const std::string& codec);

/// "2.5 Mbit/s", "192 kbit/s".
std::string BitrateText(int64_t bitsPerSecond);

}  // namespace App::Catalogue
