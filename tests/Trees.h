#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "Kestro/Core/Property.h"
#include "Kestro/Core/PropertyValueToString.h"

namespace Kestro::Core {

/// A tree in one line: `root{a=1,b{c=text}}`, an empty node as its name alone.
inline std::string Dump(const Property& node) {  // NOLINT(misc-no-recursion)
    std::string text = node.Name();
    if (node.Type() != PropertyTypes::Node) return node.IsEmpty() ? text : text + "=" + PropertyValueToString(node);
    const char* separator = "{";
    for (const Property& child : node) {
        text += separator + Dump(child);
        separator = ",";
    }
    return text + "}";
}

/// How failed expectations show a Property.
inline void PrintTo(const Property& node, std::ostream* out) { *out << Dump(node); }

/// A node with copies of those children.
inline Property NodeOf(const std::string& name, const std::vector<Property>& children) {
    Property node(name);
    for (const Property& child : children) node.SetChild(child.Name(), child);
    return node;
}

namespace Trees {

inline Property Scalar(const std::string& name, const std::string& text) {
    if (text == "true" || text == "false") return {name, text == "true"};
    if (text.starts_with('\'')) return {name, text.substr(1, text.size() - 2)};
    const bool isNumber = text.find_first_not_of("-0123456789./") == std::string::npos;
    Property value(name, text);
    if (!isNumber) return value;
    if (text.find('/') != std::string::npos) return {name, value.GetRatio()};
    if (text.find('.') != std::string::npos) return {name, value.GetDouble()};
    return {name, value.GetInt64()};
}

inline Property Take(std::string_view& rest) {  // NOLINT(misc-no-recursion)
    const auto cut = [&rest](const char* ends) {
        std::string text(rest.substr(0, rest.find_first_of(ends)));
        rest.remove_prefix(text.size());
        return text;
    };
    const std::string name = cut("={,}");
    if (rest.starts_with('=')) {
        rest.remove_prefix(1);
        return Scalar(name, cut(",}"));
    }
    Property node(name);
    if (!rest.starts_with('{')) return node;
    while (!rest.starts_with('}')) {
        rest.remove_prefix(1);
        const Property child = Take(rest);
        node.SetChild(child.Name(), child);
    }
    rest.remove_prefix(1);
    return node;
}

}  // namespace Trees

/// The tree that Dump shows so. Values are read as their kind: true, 25, 2.5, 30000/1001, text; '25' is a text.
inline Property TreeOf(std::string_view text) { return Trees::Take(text); }

}  // namespace Kestro::Core
