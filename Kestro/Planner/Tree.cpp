#include "Kestro/Planner/Tree.h"

#include "Kestro/Conf/DataHelpers/SettingPath.h"

namespace Kestro::Planner {

using Kestro::PropertyTypes;
using Kestro::Core::Property;

bool IsNode(const Property& property) {
    return property.Type() == PropertyTypes::Node || property.Type() == PropertyTypes::Empty;
}

std::string Below(const std::string& path, const std::string& name) { return Conf::JoinPath(path, name); }

std::string LastSegment(const std::string& path) { return std::string(Conf::LastSegment(path)); }

std::vector<std::string> Segments(const std::string& path) {
    std::vector<std::string> segments;
    std::size_t begin = 0;
    for (std::size_t end = 0; end != std::string::npos; begin = end + 1) {
        end = path.find(Property::SEPARATOR, begin);
        segments.push_back(path.substr(begin, end - begin));
    }
    return segments;
}

std::string TextAt(const Property& node, const std::string& path) {
    const Property* found = node.FindByPath(path);
    return found != nullptr && found->Type() == PropertyTypes::String ? found->GetString() : std::string();
}

std::optional<int64_t> Integer(const Property& node, const std::string& path) {
    const Property* found = node.FindByPath(path);
    return found != nullptr ? std::optional(found->GetInt64()) : std::nullopt;
}

bool Flag(const Property& node, const std::string& path) {
    const Property* found = node.FindByPath(path);
    return found != nullptr && found->GetBool();
}

void Override(Property& settings, const Property& other) {
    for (const Property& child : other) {
        if (IsNode(child) && settings.ChildExists(child.Name())) {
            Override(settings[child.Name()], child);
        } else {
            settings.SetChild(child.Name(), child);
        }
    }
}

void Complete(Property& settings, const Property& other) {
    for (const Property& child : other) {
        if (!settings.ChildExists(child.Name())) {
            settings.SetChild(child.Name(), child);
        } else if (IsNode(child) && IsNode(settings[child.Name()])) {
            Complete(settings[child.Name()], child);
        }
    }
}

}  // namespace Kestro::Planner
