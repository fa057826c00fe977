// Reads bytes as a sequence of operations on one tree, and checks after each what every tree promises.

#include <algorithm>
#include <boost/rational.hpp>
#include <cmath>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Kestro/Core/Property.h"
#include "Kestro/Core/PropertyException.h"
#include "Kestro/Core/PropertyValueToString.h"

#include "Fuzzing.h"

namespace {

using Fuzzing::Input;
using Fuzzing::Require;
using Kestro::PropertyTypes;
using Kestro::Core::Property;
using Kestro::Core::PropertyException;
using Kestro::Core::PropertyValueToString;

/// Copies of a part into its own whole double it: this many nodes are enough.
constexpr std::size_t kMostNodes = 300;

std::size_t NodeCount(const Property& node) {
    std::size_t count = 1;
    for (const Property& child : node) count += NodeCount(child);
    return count;
}

/// A NaN differs from itself, so a tree that holds one differs from its copy.
bool HoldsNan(const Property& node) {
    if (node.Type() == PropertyTypes::Double && std::isnan(node.GetDouble())) return true;
    return std::any_of(node.begin(), node.end(), HoldsNan);
}

bool Contains(const Property& tree, const Property& node) {
    return &tree == &node ||
           std::any_of(tree.begin(), tree.end(), [&](const Property& child) { return Contains(child, node); });
}

/// Names with a separator cannot be told from paths, nor those with an equals sign from a choice.
bool IsPlainName(const std::string& name) { return !name.empty() && name.find_first_of("/=") == std::string::npos; }

bool HasPlainNames(const Property& node) {
    return std::all_of(node.begin(), node.end(), [](const Property& child) { return IsPlainName(child.Name()); });
}

std::string Name(Input& input) {
    static const std::string kNames[] = {"a", "b", "c", "", "TypeId", "a/b", "a=b"};
    const std::size_t choice = input.Below(std::size(kNames) + 1);
    return choice < std::size(kNames) ? kNames[choice] : input.Text();
}

/// Often something that reads as a number.
std::string Text(Input& input) {
    static const char kCharacters[] = "0123456789.-+/eE";
    if (input.Bool()) return input.Text();
    std::string text(input.Below(24), ' ');
    for (char& c : text) c = kCharacters[input.Below(std::size(kCharacters) - 1)];
    return text;
}

boost::rational<int64_t> Ratio(Input& input) {
    // The greatest negative number has no positive, which boost::rational needs.
    const int64_t numerator = std::max(input.Integer(), -std::numeric_limits<int64_t>::max());
    const int64_t denominator = input.Integer() & std::numeric_limits<int64_t>::max();
    return {numerator, std::max<int64_t>(denominator, 1)};
}

/// A node of the tree: a way down that ends at random.
Property& Pick(Input& input, Property& root) {
    Property* node = &root;
    for (std::size_t depth = input.Below(8); depth > 0 && node->Count() > 0; --depth) {
        node = &(*node)[std::as_const(*node)[input.Below(node->Count())].Name()];
    }
    return *node;
}

/// The value in the form that `get` reads; nothing where it throws what it may.
template <class Get>
auto Read(const Property& node, Get get) -> std::optional<decltype(get(node))> {
    try {
        return get(node);
    } catch (const PropertyException& exception) {
        const auto* description = boost::get_error_info<Kestro::TagDescription>(exception);
        Require(description != nullptr && !description->empty(), "a failed conversion says what failed");
        const auto* details = boost::get_error_info<Kestro::TagDetails>(exception);
        Require(details != nullptr && *details == PropertyValueToString(node), "a failed conversion names the value");
        return std::nullopt;
    }
}

/// A value that was read is written as a text that is read as the same value.
template <class Get>
auto ReadAndReturn(const Property& node, Get get) {
    const auto value = Read(node, get);
    if (value) {
        const Property text("", PropertyValueToString(Property("", *value)));
        Require(get(text) == *value, "a printed value reads as itself");
    }
    return value;
}

void CheckConversions(const Property& node) {
    const auto integer = ReadAndReturn(node, [](const Property& p) { return p.GetInt64(); });
    const auto ratio = ReadAndReturn(node, [](const Property& p) { return p.GetRatio(); });
    const auto truth = ReadAndReturn(node, [](const Property& p) { return p.GetBool(); });
    const auto real = Read(node, [](const Property& p) { return p.GetDouble(); });
    Read(node, [](const Property& p) { return std::cref(p.GetString()); });

    if (node.Type() == PropertyTypes::String && real) {
        Require(std::isfinite(*real), "a text reads as a finite number");
        ReadAndReturn(node, [](const Property& p) { return p.GetDouble(); });
    }
    if (ratio) {
        Require(ratio->denominator() > 0, "a ratio has a positive denominator");
        Require(integer && *integer == ratio->numerator() / ratio->denominator(),
                "an integer is its ratio towards zero");
    }
    if (integer && *integer != 0) Require(truth && *truth, "what is not zero is true");
    if (real && ratio) {
        const auto expected = boost::rational_cast<double>(*ratio);
        Require(std::abs(*real - expected) <= 1e-15 * std::abs(expected), "a number is its ratio");
    }
}

void CheckNode(const Property& node) {
    std::set<std::string> names;
    std::size_t count = 0;
    const bool isPlain = HasPlainNames(node);
    for (const Property& child : node) {
        Require(names.insert(child.Name()).second, "the names of children are unique");
        Require(&node[count] == &child, "the place of a child is its place in the iteration");
        Require(&node[child.Name()] == &child && node.ChildExists(child.Name()), "a child is found by its name");
        if (isPlain) {
            Require(&node.ChildByPath(child.Name()) == &child, "a child is found by its path");
            if (HasPlainNames(child)) {
                for (const Property& grandchild : child) {
                    const std::string path = child.Name() + Property::SEPARATOR + grandchild.Name();
                    Require(&node.ChildByPath(path) == &grandchild, "a path leads down");
                }
            }
        }
        CheckNode(child);
        ++count;
    }
    Require(count == node.Count(), "the count is the number of children");
    Require((node.Type() == PropertyTypes::Node) == (count > 0), "a node with children, and no other, is a list");
    Require(node.IsEmpty() == (node.Type() == PropertyTypes::Empty), "what has no type is empty");
}

void CheckTree(const Property& tree) {
    CheckNode(tree);
    Property copy(tree);
    if (!HoldsNan(tree)) Require(copy == tree && tree == copy, "a copy equals its original");
    Require(copy.Name() == tree.Name() && NodeCount(copy) == NodeCount(tree), "a copy is whole");
    const Property moved(std::move(copy));
    Require(copy.IsEmpty() && copy.Count() == 0, "a moved-from tree is empty");  // NOLINT(bugprone-use-after-move)
    if (!HoldsNan(tree)) Require(moved == tree, "what was moved equals the original");
}

/// Sets a child of one of the kinds of value, which is then to be read.
Property& SetScalar(Input& input, Property& node, const std::string& name) {
    switch (input.Byte() % 7) {
        case 0: {
            const bool value = input.Bool();
            Property& child = node.SetChild(name, value);
            Require(child.GetBool() == value, "a boolean is kept");
            return child;
        }
        case 1: {
            const double value = input.Real();
            Property& child = node.SetChild(name, value);
            Require(child.GetDouble() == value || std::isnan(value), "a real number is kept");
            return child;
        }
        case 2: {
            const int64_t value = input.Integer();
            Property& child = node.SetChild(name, value);
            Require(child.GetInt64() == value, "an integer is kept");
            return child;
        }
        case 3: {
            const std::string value = Text(input);
            Property& child = node.SetChild(name, value);
            Require(child.GetString() == value, "a text is kept");
            return child;
        }
        case 4: {
            const auto value = Ratio(input);
            Property& child = node.SetChild(name, value);
            Require(child.GetRatio() == value, "a ratio is kept");
            return child;
        }
        case 5:
            return node.SetChild(name, static_cast<int>(input.Byte()));
        default:
            return node.SetChild(name);
    }
}

/// Sets a child in one of all ways, `source` being anywhere in the same tree.
Property& SetAnyChild(Input& input, Property& root, Property& node, const std::string& name) {
    Property& source = Pick(input, root);
    switch (input.Byte() % 5) {
        case 0:
            return node.SetChild(name, source);
        case 1:
            if (&source == &node) break;  // all its children would go into the new one
            return node.SetChild(name, std::move(source));
        case 2:
            if (source.Type() != PropertyTypes::String) break;
            return node.SetChild(name, source.GetString());
        case 3:
            return node.SetChild(name, source.Name());
        default:
            break;
    }
    return SetScalar(input, node, name);
}

void SetChild(Input& input, Property& root) {
    Property& node = Pick(input, root);
    const std::string name = Name(input);
    std::vector<std::string> names;
    for (const Property& child : node) names.push_back(child.Name());
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);

    const Property& child = SetAnyChild(input, root, node, name);

    Require(&node[name] == &child, "the child that is set is returned");
    const bool isInPlace =
        std::equal(names.begin(), names.end(), node.begin(), node.end(),
                   [](const std::string& expected, const Property& c) { return c.Name() == expected; });
    Require(isInPlace, "a child that is set keeps its place, a new one comes last");
    if (child.Count() == 0) CheckConversions(child);
}

void RemoveChild(Input& input, Property& root) {
    Property& node = Pick(input, root);
    const std::string name =
        node.Count() > 0 && input.Bool() ? std::as_const(node)[input.Below(node.Count())].Name() : Name(input);
    const std::size_t count = node.Count();
    const bool wasThere = node.ChildExists(name);
    node.RemoveChild(name);
    Require(!node.ChildExists(name) && node.Count() == count - (wasThere ? 1 : 0), "one child is removed");
}

void Assign(Input& input, Property& root) {
    Property& node = Pick(input, root);
    Property& source = Pick(input, root);
    const std::string name = node.Name();
    switch (input.Byte() % 4) {
        case 0: {
            const Property before(source);
            node = source;
            if (!HoldsNan(before)) Require(node == before, "what is assigned is there");
            break;
        }
        case 1:
            node = std::move(source);
            break;
        case 2: {
            const Property before(source);
            node.CopyDataFrom(source);
            if (!HoldsNan(before)) Require(node == before, "what is copied is there");
            Require(node.Name() == name, "a node that data is copied to keeps its name");
            break;
        }
        default:
            if (input.Bool()) {
                node = Text(input);
            } else {
                node = input.Integer();
            }
            Require(node.Name() == name, "a node that is given a value keeps its name");
            CheckConversions(node);
    }
}

void Find(Input& input, Property& root) {
    const Property& node = Pick(input, root);
    std::string path;
    for (std::size_t segments = input.Below(4); segments > 0; --segments) {
        path += Name(input);
        if (input.Bool()) path += "=" + Name(input);
        if (segments > 1) path += Property::SEPARATOR;
    }
    const Property* found = node.FindByPath(path);
    if (found != nullptr) {
        Require(Contains(node, *found), "a path leads to a node below");
        Require(&node.ChildByPath(path) == found, "both ways of finding find the same");
        return;
    }
    try {
        node.ChildByPath(path);
        Require(false, "a path that leads nowhere throws");
    } catch (const PropertyException& exception) {
        const auto* details = boost::get_error_info<Kestro::TagDetails>(exception);
        Require(details != nullptr && *details == path, "a failed search names the path");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    Property root("root");
    for (int operation = 0; operation < 64 && !input.IsAtEnd(); ++operation) {
        switch (input.Byte() % 8) {
            case 0:
            case 1:
            case 2:
                SetChild(input, root);
                break;
            case 3:
                RemoveChild(input, root);
                break;
            case 4:
                Assign(input, root);
                break;
            case 5:
                Pick(input, root).RemoveAll();
                break;
            default:
                Find(input, root);
        }
        if (NodeCount(root) > kMostNodes) break;
        CheckTree(root);
    }
    return 0;
}
