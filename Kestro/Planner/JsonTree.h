#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>

#include "Kestro/Core/Property.h"

/// Settings trees as JSON and back: the one mapping that presets and plans share.
///
/// A node is an object whose members are its children in order; a node without value and children is {}. The list of
/// streams is an array, its children named 0, 1, 2 in the tree. Integers are 64 bits, ratios texts such as
/// "30000/1001".
namespace Kestro::Planner {

using Json = nlohmann::ordered_json;

/// No JSON text is nested deeper, has more values and nodes, or longer names and texts. The largest preset has some
/// hundred settings of some ten bytes.
constexpr std::size_t kMaxJsonDepth = 32;
constexpr std::size_t kMaxJsonSettings = 4096;
constexpr std::size_t kMaxJsonText = 4096;

Json TreeJson(const Kestro::Core::Property& node);

/// Reads a whole text; ratios stay the texts that they are. Throws NotAcceptable (InvalidJson) naming the text, line
/// and column for what is no JSON, beyond these limits, has a member twice, or holds a number that fits into neither 64
/// bits nor a double; and for null and lists in places where settings have none.
Kestro::Core::Property ParseJsonTree(const std::string& text, const std::string& name);

}  // namespace Kestro::Planner
