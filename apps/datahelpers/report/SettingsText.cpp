#include "report/SettingsText.h"

#include <algorithm>
#include <ostream>
#include <string>

#include "Kestro/Conf/IFormatCodec.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/Planner/Text.h"

namespace App {

using Kestro::Core::Property;

void PrintTree(std::ostream& out, const Property& node, std::size_t indent) {
    // Under a constant bitrate the quality has no effect.
    using Kestro::Conf::IFormatCodec;
    const Property* mode = node.FindByPath(IFormatCodec::TAG_BITRATE_MODE);
    const bool hidesQuality = mode != nullptr && mode->Count() == 0 &&
                              Kestro::Core::PropertyValueToString(*mode) != IFormatCodec::TAG_BITRATE_MODE_VBR;
    std::size_t longest = 0;
    for (const Property& child : node) {
        if (child.Count() == 0) longest = std::max(longest, child.Name().size());
    }
    for (const Property& child : node) {
        if (hidesQuality && child.Name() == IFormatCodec::TAG_QUALITY) continue;
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
