#pragma once

#include <cstddef>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Kestro/Core/Property.h"

namespace Kestro::Core {

/// Finds the children of a large node by name and by place, in a time that does not grow with their number. Names are
/// seen where they stand: that of a child never changes.
class ChildIndex {
public:
    ChildIndex(Property* first, std::size_t count);

    /// Null where there is no such child.
    Property* Find(std::string_view name) const noexcept;
    Property* At(std::size_t place) const noexcept { return places_[place]; }

    /// The new last child.
    void Append(Property* child);
    /// Gives the child before the one that goes; null for the first.
    Property* Remove(const Property* child) noexcept;

private:
    /// No preset can be written so that its names fall together: the key is drawn anew in every process.
    struct Hash {
        std::size_t operator()(std::string_view name) const noexcept;
    };

    std::unordered_map<std::string_view, Property*, Hash> byName_;
    std::vector<Property*> places_;
};

}  // namespace Kestro::Core
