#include "Kestro/Core/Property.h"

#include <cstring>
#include <utility>

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

Property::Property(const std::string& name) : name_(name) {}
Property::Property(const std::string& name, bool value) : Property(name, Value(value)) {}
Property::Property(const std::string& name, double value) : Property(name, Value(value)) {}
Property::Property(const std::string& name, int value) : Property(name, Value(int64_t{value})) {}
Property::Property(const std::string& name, int64_t value) : Property(name, Value(value)) {}
Property::Property(const std::string& name, const char* value) : Property(name, Value(std::string(value))) {}
Property::Property(const std::string& name, std::string_view value) : Property(name, Value(std::string(value))) {}
Property::Property(const std::string& name, const std::string& value) : Property(name, Value(value)) {}
Property::Property(const std::string& name, const Ratio& value) : Property(name, Value(value)) {}

Property::Property(const Property& other) : Property(other, Shallow()) { CopyChildren(other); }

Property::Property(Property&& other) noexcept { *this = std::move(other); }

Property::~Property() { RemoveAll(); }

Property& Property::operator=(const Property& other) {
    if (this != &other) *this = Property(other);  // The other may hang below this node: copy it first.
    return *this;
}

Property& Property::operator=(Property&& other) noexcept {
    if (this == &other) return *this;
    if (IsBelow(other)) return *this = Property(other);  // What holds this node cannot be moved into it.
    if (parent_ == nullptr) {
        // A child that is moved from stays where it is, under its name.
        if (other.parent_ != nullptr) {
            name_ = other.name_;
        } else {
            name_ = std::move(other.name_);
            other.name_.clear();
        }
    }
    TakeData(other);
    return *this;
}

Property& Property::operator=(bool value) { return SetValue(Value(value)); }
Property& Property::operator=(double value) { return SetValue(Value(value)); }
Property& Property::operator=(int value) { return SetValue(Value(int64_t{value})); }
Property& Property::operator=(int64_t value) { return SetValue(Value(value)); }
Property& Property::operator=(const char* value) { return SetValue(Value(std::string(value))); }
Property& Property::operator=(std::string_view value) { return SetValue(Value(std::string(value))); }
Property& Property::operator=(const std::string& value) { return SetValue(Value(value)); }
Property& Property::operator=(const Ratio& value) { return SetValue(Value(value)); }

void Property::CopyDataFrom(const Property& other) {
    if (this == &other) return;
    Property copy(other);
    TakeData(copy);
}

Property& Property::SetChild(const std::string& name) { return Child(name).SetValue(Value()); }
Property& Property::SetChild(const std::string& name, bool value) { return Child(name).SetValue(Value(value)); }
Property& Property::SetChild(const std::string& name, double value) { return Child(name).SetValue(Value(value)); }
Property& Property::SetChild(const std::string& name, int value) { return Child(name).SetValue(Value(int64_t{value})); }
Property& Property::SetChild(const std::string& name, int64_t value) { return Child(name).SetValue(Value(value)); }
Property& Property::SetChild(const std::string& name, const Ratio& value) { return Child(name).SetValue(Value(value)); }

Property& Property::SetChild(const std::string& name, const char* value) {
    return SetChild(name, std::string_view(value));
}

Property& Property::SetChild(const std::string& name, std::string_view value) {
    Value kept = std::string(value);
    return Child(name).SetValue(std::move(kept));
}

Property& Property::SetChild(const std::string& name, const std::string& value) {
    Value kept = value;  // It may be this node's own text, which goes when a child comes.
    return Child(name).SetValue(std::move(kept));
}

Property& Property::SetChild(const std::string& name, const Property& value) { return SetChild(name, Property(value)); }

Property& Property::SetChild(const std::string& name, Property&& value) {
    // It may be the name or the text of the value, which goes when that is moved.
    const std::string key = name;  // NOLINT(performance-unnecessary-copy-initialization)
    Property kept = IsBelow(value) ? Property(value) : Property(std::move(value));
    Property& child = Child(key);
    child.TakeData(kept);
    return child;
}

void Property::RemoveChild(const std::string& name) {
    Property* before = nullptr;
    for (Property* child = first_; child != nullptr; before = child, child = child->next_) {
        if (child->name_ != name) continue;
        (before != nullptr ? before->next_ : first_) = child->next_;
        if (last_ == child) last_ = before;
        --count_;
        delete child;
        return;
    }
}

void Property::RemoveAll() noexcept {
    if (first_ != nullptr) RemoveChildren();
}

void Property::RemoveChildren() noexcept {
    // Level by level and not by recursion: a tree may be deeper than the stack.
    Property* head = std::exchange(first_, nullptr);
    Property* tail = std::exchange(last_, nullptr);
    count_ = 0;
    while (head != nullptr) {
        if (head->first_ != nullptr) {
            tail->next_ = head->first_;
            tail = head->last_;
            head->first_ = head->last_ = nullptr;
        }
        Property* const next = head->next_;
        delete head;
        head = next;
    }
}

const Property& Property::Missing(const std::string& name) const {
    ThrowMissing(name_.empty() ? name : name_ + SEPARATOR + name, name);
}

void Property::ThrowTooLarge(uint64_t value) {
    const std::string text = std::to_string(value);
    PropertyException exception;
    exception << TagDescription(text + " is too large for an integer of a settings tree") << TagDetails(text);
    Throw(exception, BOOST_CURRENT_LOCATION);
}

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

/// Goes down a path that is not empty as far as it leads. Gives the last node, or null and the rest of the path from
/// its first missing segment on.
const Property* Property::Walk(std::string_view& path) const {
    const Property* node = this;
    const char* at = path.data();
    const char* const end = at + path.size();
    while (true) {
        const auto left = static_cast<size_t>(end - at);
        // The name that the path begins with is found without looking for the end of the segment.
        const char first = left != 0 && *at != '/' ? *at : '\0';  // of an empty name, its end
        const Property* child = node->first_;
        size_t size = 0;
        for (; child != nullptr; child = child->next_) {
            if (*child->name_.data() != first) continue;
            size = child->name_.size();
            const bool isWhole = size < left ? at[size] == '/' : size == left;
            if (isWhole && SameBytes(child->name_.data(), at, size)) break;
        }
        if (child == nullptr) {
            const std::string_view segment = FirstSegment({at, left});
            const size_t equals = segment.find('=');
            if (equals != std::string_view::npos) {
                child = node->Select(segment.substr(0, equals), segment.substr(equals + 1));
            }
            if (child == nullptr) {
                path = {at, left};
                return nullptr;
            }
            size = segment.size();
        }
        if (size == left) return child;
        node = child;
        at += size + 1;
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

template <class Value>
bool SameValue(const Value& a, const Value& b) {
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
        default:
            return true;
    }
}

}  // namespace

bool Property::operator==(const Property& other) const noexcept {
    // Side by side along both trees, by their links and not by recursion: a tree may be deeper than the stack.
    const Property* mine = this;
    const Property* theirs = &other;
    while (true) {
        if (mine->count_ != theirs->count_) return false;
        if (mine->first_ != nullptr) {
            mine = mine->first_;
            theirs = theirs->first_;
        } else {
            if (!SameValue(mine->value_, theirs->value_)) return false;
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
        [](std::monostate) { return std::optional<bool>(); },
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
        [](std::monostate) { return std::optional<double>(); },
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
        [](std::monostate) { return std::optional<int64_t>(); },
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
        [](std::monostate) { return std::optional<Ratio>(); },
        [](bool value) { return std::optional<Ratio>(Ratio(value ? 1 : 0)); },
        [](double value) { return Conversions::ToRatio(value); },
        [](int64_t value) { return std::optional<Ratio>(Ratio(value)); },
        [](const std::string& value) { return Conversions::ParseRatio(value); },
        [](const Ratio& value) { return std::optional<Ratio>(value); },
    };
    return ValueOrThrow(std::visit(convert, value_), *this, "a ratio");
}

const Property* Property::Select(std::string_view field, std::string_view text) const {
    for (const Property* child = first_; child != nullptr; child = child->next_) {
        const Property* value = child->Find(field);
        if (value == nullptr) continue;
        const auto* own = std::get_if<std::string>(&value->value_);
        if (own != nullptr ? *own == text : PropertyValueToString(*value) == text) return child;
    }
    return nullptr;
}

bool Property::IsBelow(const Property& other) const noexcept {
    const Property* node = parent_;
    while (node != nullptr && node != &other) node = node->parent_;
    return node != nullptr;
}

Property& Property::Child(const std::string& name) {
    if (Property* child = Find(name)) {
        child->RemoveAll();
        return *child;
    }
    auto* child = new Property(name);
    value_ = Value();
    return Append(child);
}

Property& Property::Append(Property* child) noexcept {
    child->parent_ = this;
    (last_ != nullptr ? last_->next_ : first_) = child;
    last_ = child;
    ++count_;
    return *child;
}

Property& Property::SetValue(Value&& value) noexcept {
    value_ = std::move(value);
    RemoveAll();
    return *this;
}

void Property::CopyChildren(const Property& other) {
    const Property* from = &other;
    Property* to = this;
    while (true) {
        if (from->first_ != nullptr) {
            from = from->first_;
        } else {
            while (from != &other && from->next_ == nullptr) {
                from = from->parent_;
                to = to->parent_;
            }
            if (from == &other) return;
            from = from->next_;
            to = to->parent_;
        }
        to = &to->Append(new Property(*from, Shallow()));
    }
}

void Property::TakeData(Property& other) noexcept {
    // The other node may hang below this one: take what it holds before this node's children go.
    Value value = std::exchange(other.value_, Value());
    Property* const first = std::exchange(other.first_, nullptr);
    Property* const last = std::exchange(other.last_, nullptr);
    const std::size_t count = std::exchange(other.count_, 0);
    RemoveAll();
    value_ = std::move(value);
    first_ = first;
    last_ = last;
    count_ = count;
    for (Property* child = first_; child != nullptr; child = child->next_) child->parent_ = this;
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
