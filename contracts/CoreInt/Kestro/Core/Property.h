#pragma once

#include <boost/rational.hpp>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "Kestro/Constant.h"
#include "Kestro/Export.h"
#include "Kestro/PropertyTypes.h"

namespace Kestro::Core {

class ChildIndex;

/// A named node of a settings tree: either one value, or an ordered list of children with unique names, or empty.
///
/// Value semantics: a copy is deep, a moved-from node is empty. References to children stay valid while other children
/// are added, removed or replaced; they end when their own child is removed, replaced by SetChild, or its parent
/// assigned to. A node that is a child keeps the name under which its parent holds it, whatever is assigned to it.
/// Const operations may run on any number of threads at once.
///
/// Errors: reading a child that is not there, or a value that the wanted form cannot hold, throws PropertyException.
class KESTRO_COREINT_API Property {
public:
    using Ratio = boost::rational<int64_t>;
    class ConstIterator;

    /// Joins the names of a path: "AudioResample/Resampler/SampleRate".
    static KESTRO_CONSTANT std::string SEPARATOR = "/";

    Property() noexcept = default;
    explicit Property(const std::string& name);
    Property(const std::string& name, bool value);
    Property(const std::string& name, double value);
    Property(const std::string& name, int value);
    Property(const std::string& name, int64_t value);
    /// Every other integer, as an int64_t; PropertyException for one that does not fit.
    template <std::integral Integer>
    Property(const std::string& name, Integer value) : Property(name, ToInt64(value)) {}
    Property(const std::string& name, const char* value);
    Property(const std::string& name, std::string_view value);
    Property(const std::string& name, const std::string& value);
    Property(const std::string& name, const Ratio& value);
    Property(const Property& other);
    /// May allocate, as far as a moved-from child keeps its name and what holds this node is copied.
    Property(Property&& other);  // NOLINT(performance-noexcept-move-constructor)
    virtual ~Property();

    /// Takes over value and children; the name too, unless this node is the child of another.
    Property& operator=(const Property& other);
    Property& operator=(Property&& other);  // NOLINT(performance-noexcept-move-constructor)

    /// Replace the value (children go) and keep the name.
    Property& operator=(bool value);
    Property& operator=(double value);
    Property& operator=(int value);
    Property& operator=(int64_t value);
    template <std::integral Integer>
    Property& operator=(Integer value) {
        return *this = ToInt64(value);
    }
    Property& operator=(const char* value);
    Property& operator=(std::string_view value);
    Property& operator=(const std::string& value);
    Property& operator=(const Ratio& value);

    /// Takes over value and children of the other node and keeps this node's name.
    void CopyDataFrom(const Property& other);

    const std::string& Name() const noexcept { return name_; }
    PropertyTypes Type() const noexcept { return static_cast<PropertyTypes>(value_.index()); }

    /// Makes the child `name` an empty node, or one with the value: in its old place if it was there, else at the end.
    /// A value held by this node itself goes. Name and value may be parts of this very tree or of each
    /// other. Returns the child.
    Property& SetChild(const std::string& name);
    Property& SetChild(const std::string& name, bool value);
    Property& SetChild(const std::string& name, double value);
    Property& SetChild(const std::string& name, int value);
    Property& SetChild(const std::string& name, int64_t value);
    template <std::integral Integer>
    Property& SetChild(const std::string& name, Integer value) {
        return SetChild(name, ToInt64(value));
    }
    Property& SetChild(const std::string& name, const char* value);
    Property& SetChild(const std::string& name, std::string_view value);
    Property& SetChild(const std::string& name, const std::string& value);
    Property& SetChild(const std::string& name, const Ratio& value);
    Property& SetChild(const std::string& name, const Property& value);
    Property& SetChild(const std::string& name, Property&& value);

    /// Does nothing when there is no such child.
    void RemoveChild(const std::string& name);
    /// Removes all children.
    void RemoveAll() noexcept;

    /// Number of children.
    std::size_t Count() const noexcept {
        const auto* children = std::get_if<Children>(&value_);
        return children != nullptr ? children->count : 0;
    }
    /// Neither a value nor children.
    bool IsEmpty() const noexcept { return Type() == PropertyTypes::Empty; }
    bool ChildExists(const std::string& name) const noexcept { return Find(name) != nullptr; }

    /// The child by place (in order of insertion) or by name. Throws PropertyException when it is not there.
    const Property& operator[](std::size_t place) const {
        const Property* child = At(place);
        return child != nullptr ? *child : Missing(place);
    }
    Property& operator[](std::size_t place) { return const_cast<Property&>(std::as_const(*this)[place]); }
    const Property& operator[](const std::string& name) const {
        const Property* child = Find(name);
        return child != nullptr ? *child : Missing(name);
    }
    Property& operator[](const std::string& name) {
        Property* child = Find(name);
        return child != nullptr ? *child : const_cast<Property&>(Missing(name));
    }

    /// The node below this one at a path: names joined by SEPARATOR. A segment `field=text` stands for the first child
    /// that has a child `field` with that text: "Streams/TypeId=audio/AudioCodec". The empty path is this node. Throws
    /// PropertyException naming the path and its first missing segment.
    const Property& ChildByPath(const std::string& path) const;
    Property& ChildByPath(const std::string& path);
    /// As ChildByPath, with nullptr for a node that is not there.
    const Property* FindByPath(std::string_view path) const;

    /// The children in order.
    ConstIterator begin() const noexcept;
    ConstIterator end() const noexcept;

    /// The value in the wanted form. Numbers, ratios and booleans convert by value (to an integer: towards zero; to a
    /// ratio: the shortest decimal that reads back as the double), a text by reading the whole of it: "25", "2.5",
    /// "30000/1001", "true". What cannot be kept (NaN, infinity, out of range, other text, no value) throws
    /// PropertyException with the value in TagDetails.
    bool GetBool() const;
    double GetDouble() const;
    int64_t GetInt64() const;
    Ratio GetRatio() const;
    /// Of a text alone; any other kind throws. PropertyValueToString prints every kind.
    const std::string& GetString() const {
        const auto* text = std::get_if<std::string>(&value_);
        return text != nullptr ? *text : NotAText();
    }

    /// Same kind, value and children (their names and order too); the names of the two nodes themselves do not count.
    bool operator==(const Property& other) const noexcept;

private:
    friend class ChildIndex;

    /// They hang on a list: one allocation a node, and references to them stay valid. A long list has an index, which
    /// is made when something is looked for.
    struct Children {
        Property* first = nullptr;
        Property* last = nullptr;
        std::size_t count = 0;
        mutable ChildIndex* index = nullptr;
    };
    /// In the order of PropertyTypes, so that the index is the type. A node without children is empty.
    using Value = std::variant<std::monostate, bool, double, int64_t, std::string, Ratio, Children>;

    Property(const std::string& name, Value&& value) : name_(name), value_(std::move(value)) {}

    /// The copy of one node without its children.
    struct Shallow {};
    Property(const Property& other, Shallow);
    static Value CopyWithoutChildren(const Value& value);

    template <std::integral Integer>
    static int64_t ToInt64(Integer value) {
        const auto kept = static_cast<int64_t>(value);
        if (std::unsigned_integral<Integer> && kept < 0) ThrowTooLarge(static_cast<uint64_t>(value));
        return kept;
    }
    [[noreturn]] static void ThrowTooLarge(uint64_t value);

    Property* First() const noexcept {
        const auto* children = std::get_if<Children>(&value_);
        return children != nullptr ? children->first : nullptr;
    }
    /// More children than that are not searched one by one.
    static constexpr std::size_t kFew = 32;
    Property* Find(std::string_view name) const noexcept {
        const auto* children = std::get_if<Children>(&value_);
        if (children == nullptr) return nullptr;
        if (children->count > kFew) [[unlikely]]
            return FindAmongMany(*children, name);
        return FindOneByOne(*children, name);
    }
    static Property* FindOneByOne(const Children& children, std::string_view name) noexcept {
        Property* child = children.first;
        while (child != nullptr && child->name_ != name) child = child->next_;
        return child;
    }
    static Property* FindAmongMany(const Children& children, std::string_view name) noexcept;
    Property* At(std::size_t place) const noexcept {
        const auto* children = std::get_if<Children>(&value_);
        if (children == nullptr || place >= children->count) return nullptr;
        if (children->count > kFew) [[unlikely]]
            return AtAmongMany(*children, place);
        return AtOneByOne(*children, place);
    }
    static Property* AtOneByOne(const Children& children, std::size_t place) noexcept {
        Property* child = children.first;
        for (; place != 0; --place) child = child->next_;
        return child;
    }
    static Property* AtAmongMany(const Children& children, std::size_t place) noexcept;
    /// Null where there is no memory for it.
    static ChildIndex* MakeIndex(const Children& children) noexcept;

    [[noreturn]] const Property& Missing(const std::string& name) const;
    [[noreturn]] const Property& Missing(std::size_t place) const;
    [[noreturn]] const std::string& NotAText() const;
    const Property* FindFirst(std::string_view path, std::size_t& size) const noexcept;
    const Property* Walk(std::string_view& path) const;
    const Property* Select(std::string_view field, std::string_view text) const;
    const Property& Descend(std::string_view path) const;
    bool IsBelow(const Property& other) const noexcept;
    Property& Put(const std::string& name, Value&& value);
    Property& Append(Property* child) noexcept;
    Property& SetValue(Value&& value) noexcept;
    void CopyChildren(const Property& other);
    void TakeData(Property& other) noexcept;
    void RemoveChildren(const Children& children) noexcept;

    // What a search among siblings reads comes first.
    Property* next_ = nullptr;
    std::string name_;
    Value value_;
    Property* parent_ = nullptr;
};

/// Walks the children of one node: `for (const Property& child : node)`.
class Property::ConstIterator {
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = Property;
    using difference_type = std::ptrdiff_t;
    using pointer = const Property*;
    using reference = const Property&;

    ConstIterator() noexcept = default;
    explicit ConstIterator(const Property* node) noexcept : node_(node) {}
    const Property& operator*() const noexcept { return *node_; }
    const Property* operator->() const noexcept { return node_; }
    ConstIterator& operator++() noexcept {
        node_ = node_->next_;
        return *this;
    }
    ConstIterator operator++(int) noexcept {
        const ConstIterator before = *this;
        ++*this;
        return before;
    }
    bool operator==(const ConstIterator&) const noexcept = default;

private:
    const Property* node_ = nullptr;
};

inline Property::ConstIterator Property::begin() const noexcept { return ConstIterator(First()); }
inline Property::ConstIterator Property::end() const noexcept { return {}; }

}  // namespace Kestro::Core
