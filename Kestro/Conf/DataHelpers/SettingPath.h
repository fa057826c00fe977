#pragma once

#include <string>
#include <string_view>

#include "Kestro/Core/Property.h"

/// The paths of settings: names joined by Property::SEPARATOR.
namespace Kestro::Conf {

/// "path/name"; an empty path is the root's.
inline std::string JoinPath(const std::string& path, const std::string& name) {
    return path.empty() ? name : path + Core::Property::SEPARATOR + name;
}

/// The name of the setting at that path.
inline std::string_view LastSegment(std::string_view path) {
    const std::size_t end = path.rfind(Core::Property::SEPARATOR);
    return end == std::string_view::npos ? path : path.substr(end + Core::Property::SEPARATOR.size());
}

}  // namespace Kestro::Conf
