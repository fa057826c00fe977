#include "catalogue/Markup.h"

namespace App::Catalogue {
namespace {

void AppendEscaped(std::string& to, std::string_view text) {
    for (const char c : text) {
        switch (c) {
            case '&':
                to += "&amp;";
                break;
            case '<':
                to += "&lt;";
                break;
            case '>':
                to += "&gt;";
                break;
            case '"':
                to += "&quot;";
                break;
            default:
                to += c;
        }
    }
}

void AppendStart(std::string& to, std::string_view name, Attributes attributes) {
    to += '<';
    to += name;
    for (const auto& [attribute, value] : attributes) {
        if (*attribute == '\0') continue;
        to += ' ';
        to += attribute;
        if (value.empty()) continue;
        to += "=\"";
        AppendEscaped(to, value);
        to += '"';
    }
    to += '>';
}

}  // namespace

Markup::Markup(std::string_view text) { AppendEscaped(text_, text); }

Markup Element(std::string_view name, Attributes attributes, const Markup& content) {
    Markup element;
    AppendStart(element.text_, name, attributes);
    element.text_ += content.text_;
    element.text_ += "</";
    element.text_ += name;
    element.text_ += '>';
    return element;
}

Markup Void(std::string_view name, Attributes attributes) {
    Markup element;
    AppendStart(element.text_, name, attributes);
    return element;
}

}  // namespace App::Catalogue
