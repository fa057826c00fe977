#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>

#include "Kestro/Core/Property.h"

/// Settings trees as JSON and back: the one mapping that presets and reports share.
///
/// A node is an object whose members are its children in order; a node without value and children is {}. The list of
/// streams is an array, its children named 0, 1, 2 in the tree. Integers are 64 bits, ratios texts such as
/// "30000/1001".
namespace App {

using Json = nlohmann::ordered_json;

/// No JSON text is nested deeper.
constexpr std::size_t kMaxJsonDepth = 32;

Json ToJson(const Kestro::Core::Property& node);

/// Reads a whole text; ratios stay the texts that they are. Throws Failure (NotAcceptable) naming file, line and column
/// for what is no JSON, nested too deep, has a member twice, or holds a number that fits into neither 64 bits nor a
/// double; and for null and lists in places where settings have none.
Kestro::Core::Property ParseJsonTree(const std::string& text, const std::string& fileName);

}  // namespace App
