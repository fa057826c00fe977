#include "Kestro/Planner/JsonTree.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <string_view>
#include <vector>

#include "Kestro/Conf/IPreset.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Text.h"

namespace Kestro::Planner {
namespace {

using Kestro::PropertyTypes;
using Kestro::Conf::IPreset;
using Kestro::Core::Property;

/// Walks a text and tells how far the parser has read, whichever copy of the iterator it uses.
class TrackedIterator {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    TrackedIterator(const char* at, std::size_t* consumed) : at_(at), consumed_(consumed) {}
    reference operator*() const { return *at_; }
    TrackedIterator& operator++() {
        ++at_;
        ++*consumed_;
        return *this;
    }
    TrackedIterator operator++(int) {
        TrackedIterator before = *this;
        ++*this;
        return before;
    }
    bool operator==(const TrackedIterator& other) const { return at_ == other.at_; }
    bool operator!=(const TrackedIterator& other) const { return at_ != other.at_; }

private:
    const char* at_;
    std::size_t* consumed_;
};

/// Builds the tree while the text is read: so duplicates, depth and numbers are seen as they stand in the text.
class TreeBuilder final : public nlohmann::json_sax<Json> {
public:
    TreeBuilder(const std::string& text, const std::string& name, const std::size_t& consumed)
        : text_(text), name_(name), consumed_(consumed) {}

    Property Take() { return std::move(root_); }

    bool null() override { Fail("null is no setting" + AtPath()); }
    bool boolean(bool value) override {
        Place() = value;
        return Placed();
    }
    bool number_integer(number_integer_t value) override {
        Place() = int64_t{value};
        return Placed();
    }
    bool number_unsigned(number_unsigned_t value) override {
        if (value > static_cast<number_unsigned_t>(std::numeric_limits<int64_t>::max())) {
            Fail("the number " + std::to_string(value) + AtPath() + " does not fit into 64 bits");
        }
        Place() = static_cast<int64_t>(value);
        return Placed();
    }
    bool number_float(number_float_t value, const string_t& digits) override {
        // An integer of too many digits also comes here.
        if (!std::isfinite(value) || digits.find_first_of(".eE") == string_t::npos) {
            Fail("the number " + digits + AtPath() + " does not fit into 64 bits");
        }
        Place() = double{value};
        return Placed();
    }
    bool string(string_t& value) override {
        CheckLength(value);
        Place() = value;
        return Placed();
    }
    bool binary(binary_t&) override { Fail("binary data is no setting" + AtPath()); }

    bool start_object(std::size_t) override {
        if (levels_.size() == 1 && levels_.back().member == IPreset::KEY_STREAMS) {
            Fail("\"" + IPreset::KEY_STREAMS + "\" is a list: [ ... ]");
        }
        Descend(false);
        return true;
    }
    bool key(string_t& name) override {
        Level& level = levels_.back();
        level.member.clear();  // The path of a complaint is the object's.
        CheckLength(name);
        if (level.node->ChildExists(name)) Fail("\"" + Printable(name) + "\" stands twice" + AtPath());
        level.member = name;
        return true;
    }
    bool end_object() override {
        levels_.pop_back();
        return true;
    }
    bool start_array(std::size_t) override {
        if (levels_.size() != 1 || levels_.back().member != IPreset::KEY_STREAMS) {
            Fail("a list is no setting" + AtPath() + ", only \"" + IPreset::KEY_STREAMS + "\" is one");
        }
        Descend(true);
        return true;
    }
    bool end_array() override { return end_object(); }

    bool parse_error(std::size_t position, const std::string&, const nlohmann::detail::exception& error) override {
        // The parser's own text repeats where it was; what it met follows the last of its dashes or colons.
        const std::string what = error.what();
        if (error.id == 406) Fail("a number" + AtPath() + " is too large", position);
        const std::size_t reason = what.find(": ", what.find("at line"));
        std::string message = reason != std::string::npos ? what.substr(reason + 2) : what;
        const std::string prefix = "syntax error ";
        if (message.starts_with(prefix)) message.erase(0, prefix.size());
        Fail("no valid JSON: " + Printable(message), position);
    }

private:
    struct Level {
        Property* node;
        bool isList = false;
        std::string member;  ///< name of the child that is being read
    };

    /// The node that takes the value which is being read.
    Property& Place() {
        if (levels_.empty()) Fail("settings are an object: { ... }");
        if (++settings_ > kMaxJsonSettings) Fail("more than " + std::to_string(kMaxJsonSettings) + " settings");
        Level& level = levels_.back();
        if (level.isList) level.member = std::to_string(level.node->Count());
        return level.node->SetChild(level.member);
    }
    static bool Placed() { return true; }

    void CheckLength(const std::string& text) const {
        if (text.size() > kMaxJsonText) {
            Fail("a text" + AtPath() + " is longer than " + std::to_string(kMaxJsonText) + " bytes");
        }
    }

    void Descend(bool isList) {
        if (levels_.size() >= kMaxJsonDepth) {
            Fail("nested deeper than " + std::to_string(kMaxJsonDepth) + " levels");
        }
        Property* node = levels_.empty() ? &root_ : &Place();
        levels_.push_back({node, isList, {}});
    }

    std::string AtPath() const {
        std::string path;
        for (const Level& level : levels_) {
            if (!level.member.empty()) path += (path.empty() ? "" : Property::SEPARATOR) + level.member;
        }
        return path.empty() ? path : " at " + Printable(path);
    }

    [[noreturn]] void Fail(const std::string& message) const { Fail(message, consumed_); }
    [[noreturn]] void Fail(const std::string& message, std::size_t position) const {
        const std::string_view before = std::string_view(text_).substr(0, std::min(position, text_.size()));
        const auto line = 1 + std::count(before.begin(), before.end(), '\n');
        const std::size_t lineBegin = before.rfind('\n') + 1;  // npos + 1 is 0
        const std::size_t column = std::max<std::size_t>(1, before.size() - lineBegin);
        throw NotAcceptable({.code = ProblemCode::InvalidJson,
                             .message = Printable(name_) + ", line " + std::to_string(line) + ", column " +
                                        std::to_string(column) + ": " + message + "."});
    }

    const std::string& text_;
    const std::string& name_;
    const std::size_t& consumed_;
    Property root_;
    std::vector<Level> levels_;
    std::size_t settings_ = 0;
};

}  // namespace

Json TreeJson(const Property& node) {
    switch (node.Type()) {
        case PropertyTypes::Bool:
            return node.GetBool();
        case PropertyTypes::Double:
            return node.GetDouble();
        case PropertyTypes::Int64:
            return node.GetInt64();
        case PropertyTypes::String:
        case PropertyTypes::Ratio:
            return PropertyValueToString(node);
        case PropertyTypes::Empty:
        case PropertyTypes::Node:
            break;
    }
    if (node.Name() == IPreset::KEY_STREAMS) {
        Json list = Json::array();
        for (const Property& stream : node) list.push_back(TreeJson(stream));
        return list;
    }
    Json object = Json::object();
    for (const Property& child : node) object[child.Name()] = TreeJson(child);
    return object;
}

Property ParseJsonTree(const std::string& text, const std::string& name) {
    std::size_t consumed = 0;
    TreeBuilder builder(text, name, consumed);
    Json::sax_parse(TrackedIterator(text.data(), &consumed), TrackedIterator(text.data() + text.size(), &consumed),
                    &builder);
    return builder.Take();
}

}  // namespace Kestro::Planner
