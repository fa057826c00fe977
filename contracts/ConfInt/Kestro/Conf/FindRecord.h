#pragma once

#include <algorithm>
#include <iterator>

namespace Kestro::Conf {

/// The first row of a table that `matches` accepts, or null.
template <class Table, class Matches>
auto FindRecord(const Table& table, Matches matches) -> decltype(&*std::begin(table)) {
    const auto found = std::ranges::find_if(table, matches);
    return found != std::end(table) ? &*found : nullptr;
}

}  // namespace Kestro::Conf
