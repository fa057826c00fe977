#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Kestro/Core/Property.h"

/// Walking and merging settings trees, and their paths.
namespace Kestro::Planner {

/// Whether it holds settings and no value of its own: also when there are none.
bool IsNode(const Kestro::Core::Property& property);

/// "path/name"; an empty path is the root's.
std::string Below(const std::string& path, const std::string& name);
std::string LastSegment(const std::string& path);
std::vector<std::string> Segments(const std::string& path);

/// The text at a path below the node; empty when it is absent or no text.
std::string TextAt(const Kestro::Core::Property& node, const std::string& path);

/// The integer at a path; nothing when it is absent.
std::optional<int64_t> Integer(const Kestro::Core::Property& node, const std::string& path);
/// Whether there is a true one at a path.
bool Flag(const Kestro::Core::Property& node, const std::string& path);

/// Puts the other node's settings over those of this one.
void Override(Kestro::Core::Property& settings, const Kestro::Core::Property& other);
/// Adds what the other node has and this one lacks.
void Complete(Kestro::Core::Property& settings, const Kestro::Core::Property& other);

/// Calls visit(path, value) for every value below the node; the paths begin with `path`.
template <class Visit>
void ForEachValue(const Kestro::Core::Property& node, const std::string& path, const Visit& visit) {
    for (const Kestro::Core::Property& child : node) {
        const std::string childPath = Below(path, child.Name());
        if (IsNode(child)) {
            ForEachValue(child, childPath, visit);
        } else {
            visit(childPath, child);
        }
    }
}

}  // namespace Kestro::Planner
