#include <cstring>
#include <utility>

#include "Kestro/Core/Property.h"
#include "Kestro/Core/PropertyConversions.h"
#include "Kestro/Core/PropertyException.h"
#include "Kestro/Core/PropertyValueToString.h"

namespace Kestro::Core {

namespace {

[[noreturn]] void ThrowMissing(std::string_view path, std::string_view segment) {
    std::string message = "There is no \"";
    message.append(segment).append("\" at the path \"").append(path).append("\"");
    PropertyException exception;
    exception << TagDescription(message) << TagDetails(std::string(path));
    Throw(exception, BOOST_CURRENT_LOCATION);
}

[[noreturn]] void ThrowValue(const Property& property, const char* wanted) {
    const std::string value = PropertyValueToString(property);
    std::string message = "\"" + property.Name() + "\" = \"" + value + "\" cannot be read as " + wanted;
    if (property.IsEmpty()) message = "\"" + property.Name() + "\" has no value to be read as " + wanted;
    if (property.Type() == PropertyTypes::Node) message = "\"" + property.Name() + "\" is a list, not " + wanted;
    PropertyException exception;
    exception << TagDescription(message) << TagDetails(value);
    Throw(exception, BOOST_CURRENT_LOCATION);
}

template <class... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};
template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

template <class T>
T ValueOrThrow(const std::optional<T>& value, const Property& property, const char* wanted) {
    if (!value) ThrowValue(property, wanted);
    return *value;
}

}  // namespace

const Property& Property::Missing(const std::string& name) const {
    ThrowMissing(name_.empty() ? name : name_ + SEPARATOR + name, name);
}

void Property::ThrowTooLarge(uint64_t value) {
    const std::string text = std::to_string(value);
    PropertyException exception;
    exception << TagDescription(text + " is too large for an integer of a settings tree") << TagDetails(text);
    Throw(exception, BOOST_CURRENT_LOCATION);
}

const Property& Property::Missing(std::size_t place) const { Missing(std::to_string(place)); }

const std::string& Property::NotAText() const { ThrowValue(*this, "a text"); }

const Property& Property::ChildByPath(const std::string& path) const { return Descend(path); }

Property& Property::ChildByPath(const std::string& path) { return const_cast<Property&>(Descend(path)); }

namespace {

/// Whether two texts of the same length are the same, without a call for the short ones that names are.
[[gnu::always_inline]] inline bool SameBytes(const char* a, const char* b, size_t size) {
    const auto same = [a, b]<class Block>(size_t at, Block) {
        Block mine;
        Block theirs;
        std::memcpy(&mine, a + at, sizeof(Block));
        std::memcpy(&theirs, b + at, sizeof(Block));
        return mine == theirs;
    };
    if (size >= 8) {
        if (size > 16) return std::memcmp(a, b, size) == 0;
        return same(0, uint64_t()) && same(size - 8, uint64_t());
    }
    if (size >= 4) return same(0, uint32_t()) && same(size - 4, uint32_t());
    if (size >= 2) return same(0, uint16_t()) && same(size - 2, uint16_t());
    return size == 0 || *a == *b;
}

[[gnu::always_inline]] inline bool SameText(const std::string& a, const std::string& b) {
    return a.size() == b.size() && SameBytes(a.data(), b.data(), a.size());
}

/// The first segment of a path.
std::string_view FirstSegment(std::string_view path) { return path.substr(0, path.find('/')); }

}  // namespace

/// The child whose name a path begins with, and that name's size.
[[gnu::always_inline]] inline const Property* Property::FindFirst(std::string_view path, size_t& size) const noexcept {
    const auto* children = std::get_if<Children>(&value_);
    if (children == nullptr) return nullptr;
    if (children->count > kFew) {
        const std::string_view name = FirstSegment(path);
        size = name.size();
        return FindAmongMany(*children, name);
    }
    // Among few children the name is found without looking for the end of the segment.
    const char first = !path.empty() && path[0] != '/' ? path[0] : '\0';  // of an empty name, its end
    for (const Property* child = children->first; child != nullptr; child = child->next_) {
        const std::string& name = child->name_;
        if (*name.data() != first) continue;
        size = name.size();
        const bool isWhole = size < path.size() ? path[size] == '/' : size == path.size();
        if (isWhole && SameBytes(name.data(), path.data(), size)) return child;
    }
    return nullptr;
}

/// Goes down a path that is not empty as far as it leads. Gives the last node, or null and the rest of the path from
/// its first missing segment on.
const Property* Property::Walk(std::string_view& path) const {
    const Property* node = this;
    std::string_view rest = path;
    while (true) {
        size_t size = 0;
        const Property* child = node->FindFirst(rest, size);
        if (child == nullptr) {
            const std::string_view segment = FirstSegment(rest);
            const size_t equals = segment.find('=');
            if (equals != std::string_view::npos) {
                child = node->Select(segment.substr(0, equals), segment.substr(equals + 1));
            }
            if (child == nullptr) {
                path = rest;
                return nullptr;
            }
            size = segment.size();
        }
        if (size == rest.size()) return child;
        node = child;
        rest.remove_prefix(size + 1);
    }
}

const Property* Property::FindByPath(std::string_view path) const { return path.empty() ? this : Walk(path); }

const Property& Property::Descend(std::string_view path) const {
    if (path.empty()) return *this;
    std::string_view rest = path;
    const Property* node = Walk(rest);
    if (node == nullptr) ThrowMissing(path, FirstSegment(rest));
    return *node;
}

namespace {

/// Of a node, only the number of its children.
template <class Value>
bool SameValue(const Value& a, const Value& b) {
    constexpr auto kNode = static_cast<size_t>(PropertyTypes::Node);
    if (a.index() != b.index()) return false;
    switch (static_cast<PropertyTypes>(a.index())) {
        case PropertyTypes::Bool:
            return *std::get_if<bool>(&a) == *std::get_if<bool>(&b);
        case PropertyTypes::Double:
            return *std::get_if<double>(&a) == *std::get_if<double>(&b);
        case PropertyTypes::Int64:
            return *std::get_if<int64_t>(&a) == *std::get_if<int64_t>(&b);
        case PropertyTypes::String:
            return SameText(*std::get_if<std::string>(&a), *std::get_if<std::string>(&b));
        case PropertyTypes::Ratio:
            return *std::get_if<Property::Ratio>(&a) == *std::get_if<Property::Ratio>(&b);
        case PropertyTypes::Node:
            return std::get_if<kNode>(&a)->count == std::get_if<kNode>(&b)->count;
        case PropertyTypes::Empty:
            break;
    }
    return true;
}

}  // namespace

bool Property::operator==(const Property& other) const noexcept {
    // Side by side along both trees, by their links and not by recursion: a tree may be deeper than the stack.
    const Property* mine = this;
    const Property* theirs = &other;
    while (true) {
        if (!SameValue(mine->value_, theirs->value_)) return false;
        if (const Property* first = mine->First()) {
            mine = first;
            theirs = theirs->First();
        } else {
            while (mine != this && mine->next_ == nullptr) {
                mine = mine->parent_;
                theirs = theirs->parent_;
            }
            if (mine == this) return true;
            mine = mine->next_;
            theirs = theirs->next_;
        }
        if (!SameText(mine->name_, theirs->name_)) return false;
    }
}

bool Property::GetBool() const {
    const auto convert = Overloaded{
        [](const auto&) { return std::optional<bool>(); },
        [](bool value) { return std::optional<bool>(value); },
        [](double value) { return value == value ? std::optional<bool>(value != 0.0) : std::nullopt; },
        [](int64_t value) { return std::optional<bool>(value != 0); },
        [](const std::string& value) { return Conversions::ParseBool(value); },
        [](const Ratio& value) { return std::optional<bool>(value.numerator() != 0); },
    };
    return ValueOrThrow(std::visit(convert, value_), *this, "a boolean");
}

double Property::GetDouble() const {
    const auto convert = Overloaded{
        [](const auto&) { return std::optional<double>(); },
        [](bool value) { return std::optional<double>(value ? 1.0 : 0.0); },
        [](double value) { return std::optional<double>(value); },
        [](int64_t value) { return std::optional<double>(static_cast<double>(value)); },
        [](const std::string& value) { return Conversions::ParseDouble(value); },
        [](const Ratio& value) { return std::optional<double>(boost::rational_cast<double>(value)); },
    };
    return ValueOrThrow(std::visit(convert, value_), *this, "a number");
}

int64_t Property::GetInt64() const {
    const auto convert = Overloaded{
        [](const auto&) { return std::optional<int64_t>(); },
        [](bool value) { return std::optional<int64_t>(value ? 1 : 0); },
        [](double value) { return Conversions::ToInt64(value); },
        [](int64_t value) { return std::optional<int64_t>(value); },
        [](const std::string& value) { return Conversions::ParseInt64(value); },
        [](const Ratio& value) { return std::optional<int64_t>(boost::rational_cast<int64_t>(value)); },
    };
    return ValueOrThrow(std::visit(convert, value_), *this, "an integer");
}

Property::Ratio Property::GetRatio() const {
    const auto convert = Overloaded{
        [](const auto&) { return std::optional<Ratio>(); },
        [](bool value) { return std::optional<Ratio>(Ratio(value ? 1 : 0)); },
        [](double value) { return Conversions::ToRatio(value); },
        [](int64_t value) { return std::optional<Ratio>(Ratio(value)); },
        [](const std::string& value) { return Conversions::ParseRatio(value); },
        [](const Ratio& value) { return std::optional<Ratio>(value); },
    };
    return ValueOrThrow(std::visit(convert, value_), *this, "a ratio");
}

const Property* Property::Select(std::string_view field, std::string_view text) const {
    for (const Property* child = First(); child != nullptr; child = child->next_) {
        const Property* value = child->Find(field);
        if (value == nullptr) continue;
        const auto* own = std::get_if<std::string>(&value->value_);
        if (own != nullptr ? *own == text : PropertyValueToString(*value) == text) return child;
    }
    return nullptr;
}

std::string PropertyValueToString(const Property& property) {
    switch (property.Type()) {
        case PropertyTypes::Bool:
            return property.GetBool() ? "true" : "false";
        case PropertyTypes::Double:
            return Conversions::Print(property.GetDouble());
        case PropertyTypes::Int64:
            return std::to_string(property.GetInt64());
        case PropertyTypes::String:
            return property.GetString();
        case PropertyTypes::Ratio: {
            const Property::Ratio ratio = property.GetRatio();
            return std::to_string(ratio.numerator()) + "/" + std::to_string(ratio.denominator());
        }
        case PropertyTypes::Empty:
        case PropertyTypes::Node:
            break;
    }
    return {};
}

}  // namespace Kestro::Core
