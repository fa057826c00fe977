#include "Kestro/Core/Property.h"

#include <atomic>
#include <memory>
#include <utility>

#include "Kestro/Core/ChildIndex.h"

namespace Kestro::Core {

[[gnu::always_inline]] inline Property::Value Property::CopyWithoutChildren(const Value& value) {
    // One kind at a time: the copy of a std::variant of GCC 12 does not survive that the copy of its text fails.
    switch (static_cast<PropertyTypes>(value.index())) {
        case PropertyTypes::Bool:
            return *std::get_if<bool>(&value);
        case PropertyTypes::Double:
            return *std::get_if<double>(&value);
        case PropertyTypes::Int64:
            return *std::get_if<int64_t>(&value);
        case PropertyTypes::String:
            return *std::get_if<std::string>(&value);
        case PropertyTypes::Ratio:
            return *std::get_if<Ratio>(&value);
        case PropertyTypes::Empty:
        case PropertyTypes::Node:
            break;
    }
    return {};
}

[[gnu::always_inline]] inline Property& Property::Append(Property* child) noexcept {
    auto* children = std::get_if<Children>(&value_);
    if (children == nullptr) children = &value_.emplace<Children>();
    if (children->index != nullptr) {
        try {
            children->index->Append(child);
        } catch (const std::bad_alloc&) {
            delete std::exchange(children->index, nullptr);
        }
    }
    child->parent_ = this;
    (children->last != nullptr ? children->last->next_ : children->first) = child;
    children->last = child;
    ++children->count;
    return *child;
}

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

Property::Property(const Property& other, Shallow) : name_(other.name_), value_(CopyWithoutChildren(other.value_)) {}

// NOLINTNEXTLINE(performance-noexcept-move-constructor)
Property::Property(Property&& other) { *this = std::move(other); }

Property::~Property() {
    if (First() != nullptr) RemoveAll();
}

Property& Property::operator=(const Property& other) {
    if (this != &other) *this = Property(other);  // The other may hang below this node: copy it first.
    return *this;
}

// NOLINTNEXTLINE(performance-noexcept-move-constructor)
Property& Property::operator=(Property&& other) {
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

Property& Property::SetChild(const std::string& name) { return Put(name, Value()); }
Property& Property::SetChild(const std::string& name, bool value) { return Put(name, value); }
Property& Property::SetChild(const std::string& name, double value) { return Put(name, value); }
Property& Property::SetChild(const std::string& name, int value) { return Put(name, int64_t{value}); }
Property& Property::SetChild(const std::string& name, int64_t value) { return Put(name, value); }
Property& Property::SetChild(const std::string& name, const char* value) { return Put(name, std::string(value)); }
Property& Property::SetChild(const std::string& name, std::string_view value) { return Put(name, std::string(value)); }
Property& Property::SetChild(const std::string& name, const std::string& value) { return Put(name, value); }
Property& Property::SetChild(const std::string& name, const Ratio& value) { return Put(name, value); }

Property& Property::SetChild(const std::string& name, const Property& value) {
    if (value.First() == nullptr) return Put(name, CopyWithoutChildren(value.value_));
    Property copy(value);
    Property& child = Put(name, Value());
    child.TakeData(copy);
    return child;
}

Property& Property::SetChild(const std::string& name, Property&& value) {
    // It may be the name or the text of the value, which goes when that is moved.
    const std::string key = name;  // NOLINT(performance-unnecessary-copy-initialization)
    Property kept = IsBelow(value) ? Property(value) : Property(std::move(value));
    Property& child = Put(key, Value());
    child.TakeData(kept);
    return child;
}

void Property::RemoveChild(const std::string& name) {
    const Property* const child = Find(name);
    if (child == nullptr) return;
    auto& children = *std::get_if<Children>(&value_);
    Property* before = nullptr;
    if (children.index != nullptr) {
        before = children.index->Remove(child);
    } else if (child != children.first) {
        for (before = children.first; before->next_ != child;) before = before->next_;
    }
    (before != nullptr ? before->next_ : children.first) = child->next_;
    if (children.last == child) children.last = before;
    if (--children.count == 0) RemoveAll();
    delete child;
}

void Property::RemoveAll() noexcept {
    if (const auto* children = std::get_if<Children>(&value_)) RemoveChildren(*children);
}

void Property::RemoveChildren(const Children& children) noexcept {
    // Level by level and not by recursion: a tree may be deeper than the stack.
    Property* head = children.first;
    Property* tail = children.last;
    delete children.index;
    value_.emplace<std::monostate>();
    while (head != nullptr) {
        if (auto* below = std::get_if<Children>(&head->value_)) {
            tail->next_ = below->first;
            tail = below->last;
            delete below->index;
            *below = Children();
        }
        delete std::exchange(head, head->next_);
    }
}

ChildIndex* Property::MakeIndex(const Children& children) noexcept {
    // Several threads may read one node for the first time: the first to be done gives the others its index.
    const std::atomic_ref<ChildIndex*> shared(children.index);
    ChildIndex* index = shared.load(std::memory_order_acquire);
    if (index != nullptr) return index;
    try {
        auto made = std::make_unique<ChildIndex>(children.first, children.count);
        if (shared.compare_exchange_strong(index, made.get(), std::memory_order_acq_rel)) index = made.release();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
    return index;
}

Property* Property::FindAmongMany(const Children& children, std::string_view name) noexcept {
    const ChildIndex* const index = MakeIndex(children);
    return index != nullptr ? index->Find(name) : FindOneByOne(children, name);
}

Property* Property::AtAmongMany(const Children& children, std::size_t place) noexcept {
    const ChildIndex* const index = MakeIndex(children);
    return index != nullptr ? index->At(place) : AtOneByOne(children, place);
}

bool Property::IsBelow(const Property& other) const noexcept {
    const Property* node = parent_;
    while (node != nullptr && node != &other) node = node->parent_;
    return node != nullptr;
}

Property& Property::Put(const std::string& name, Value&& value) {
    Property* const child = Find(name);
    return child != nullptr ? child->SetValue(std::move(value)) : Append(new Property(name, std::move(value)));
}

Property& Property::SetValue(Value&& value) noexcept {
    RemoveAll();
    value_ = std::move(value);
    return *this;
}

void Property::CopyChildren(const Property& other) {
    const Property* from = &other;
    Property* to = this;
    while (true) {
        if (const Property* first = from->First()) {
            from = first;
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
    SetValue(std::exchange(other.value_, Value()));
    for (Property* child = First(); child != nullptr; child = child->next_) child->parent_ = this;
}

}  // namespace Kestro::Core
