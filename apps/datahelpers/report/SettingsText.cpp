#include "report/SettingsText.h"

#include <algorithm>
#include <ostream>
#include <string>

#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/Planner/Text.h"

namespace App {

using Kestro::Core::Property;

void PrintTree(std::ostream& out, const Property& node, std::size_t indent) {
    std::size_t longest = 0;
    for (const Property& child : node) {
        if (child.Count() == 0) longest = std::max(longest, child.Name().size());
    }
    for (const Property& child : node) {
        out << std::string(indent, ' ') << child.Name();
        if (child.Count() == 0) {
            const std::string value = child.IsEmpty() ? "(none)" : Kestro::Core::PropertyValueToString(child);
            out << std::string(longest - child.Name().size() + 2, ' ') << Kestro::Planner::Printable(value) << "\n";
        } else {
            out << "\n";
            PrintTree(out, child, indent + 2);
        }
    }
}

}  // namespace App
