#pragma once

#include <string>

#include "Kestro/Core/Property.h"

/// The values with which a filter's settings keep what the input has: sample rate -1, layout unknown and the like.
namespace App {

/// The mark of the setting of that name; throws std::out_of_range for one that has none.
const Kestro::Core::Property& KeepMark(const std::string& tag);

bool IsKeepMark(const std::string& tag, const Kestro::Core::Property& value);

/// Puts the marks into a filter's settings.
void KeepSource(Kestro::Core::Property& settings);

}  // namespace App
