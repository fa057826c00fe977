#pragma once

#include <string>

#include "Kestro/Core/Property.h"

/// The values with which a filter's settings keep what the input has: sample rate -1, layout unknown and the like.
namespace App {

bool IsKeepMark(const std::string& tag, const Kestro::Core::Property& value);

/// Puts the marks into a filter's settings.
void KeepSource(Kestro::Core::Property& settings);

}  // namespace App
