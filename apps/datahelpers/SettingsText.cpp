#include "SettingsText.h"

#include <algorithm>
#include <ostream>
#include <string>

#include "Kestro/Core/PropertyValueToString.h"

#include "Text.h"

namespace App {

using Kestro::Core::Property;

void PrintTree(std::ostream& out, const Property& node, std::size_t indent) {
    std::size_t longest = 0;
    for (const Property& child : node) {
        if (child.Count() == 0 && !child.IsEmpty()) longest = std::max(longest, child.Name().size());
    }
    for (const Property& child : node) {
        out << std::string(indent, ' ') << child.Name();
        if (child.IsEmpty()) {
            out << "  (none)\n";
        } else if (child.Count() == 0) {
            out << std::string(longest - child.Name().size() + 2, ' ')
                << Printable(Kestro::Core::PropertyValueToString(child)) << "\n";
        } else {
            out << "\n";
            PrintTree(out, child, indent + 2);
        }
    }
}

}  // namespace App
