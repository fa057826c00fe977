#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace App::Catalogue {

/// A piece of a page. Texts become markup by being escaped, so that none is taken for markup by mistake.
class Markup {
public:
    Markup() = default;
    Markup(const std::string& text) : Markup(std::string_view(text)) {}  // NOLINT(google-explicit-constructor)
    Markup(const char* text) : Markup(std::string_view(text)) {}         // NOLINT(google-explicit-constructor)
    Markup(std::string_view text);                                       // NOLINT(google-explicit-constructor)

    const std::string& Text() const { return text_; }
    bool IsEmpty() const { return text_.empty(); }
    Markup& operator+=(const Markup& other) {
        text_ += other.text_;
        return *this;
    }
    friend Markup operator+(Markup left, const Markup& right) {
        left += right;
        return left;
    }

private:
    friend Markup Element(std::string_view, std::initializer_list<std::pair<const char*, std::string>>, const Markup&);
    friend Markup Void(std::string_view, std::initializer_list<std::pair<const char*, std::string>>);

    std::string text_;
};

/// Names and values; one without a value is its name alone, one without a name is left out.
using Attributes = std::initializer_list<std::pair<const char*, std::string>>;

Markup Element(std::string_view name, Attributes attributes, const Markup& content);
inline Markup Element(std::string_view name, const Markup& content) { return Element(name, {}, content); }
/// One that has no content and no end: `<meta>`.
Markup Void(std::string_view name, Attributes attributes);

/// Settings, paths and names as they are typed.
inline Markup Code(const std::string& text) { return Element("code", text); }
inline Markup Link(const std::string& to, const Markup& content) { return Element("a", {{"href", to}}, content); }

}  // namespace App::Catalogue
