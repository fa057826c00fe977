#pragma once

#include <cstddef>
#include <iosfwd>

#include "Kestro/Core/Property.h"

namespace App {

/// The settings below the node, a line each, children indented under their parents.
void PrintTree(std::ostream& out, const Kestro::Core::Property& node, std::size_t indent);

}  // namespace App
