#include <algorithm>
#include <CLI/CLI.hpp>
#include <ostream>
#include <string_view>

#include "cli/HelpPages.h"

namespace App {
namespace {

/// A text as roff reads it back.
std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '-') {
            escaped += "\\-";
        } else if (c == '\\') {
            escaped += "\\e";
        } else {
            escaped += c;
        }
    }
    return escaped.starts_with('.') || escaped.starts_with('\'') ? "\\&" + escaped : escaped;
}

std::string Bold(std::string_view text) { return "\\fB" + Escaped(text) + "\\fR"; }
std::string Italic(std::string_view text) { return "\\fI" + Escaped(text) + "\\fR"; }

/// "-h, --help", "--format FORMAT", "INPUT".
std::string NamesOf(const CLI::Option& option) {
    if (option.nonpositional()) {
        std::string names;
        for (const std::string& name : option.get_snames()) names += Bold("-" + name) + ", ";
        for (const std::string& name : option.get_lnames()) names += Bold("--" + name) + ", ";
        names.resize(names.size() - 2);
        return option.get_items_expected_max() == 0 ? names : names + " " + Italic(option.get_type_name());
    }
    return Italic(option.get_name());
}

void PrintOption(std::ostream& out, const CLI::Option& option) {
    out << ".TP\n" << NamesOf(option) << "\n" << Escaped(option.get_description()) << ".\n";
}

/// Whether every command has it.
bool IsCommon(const CLI::App& app, const CLI::Option& option) {
    return option.nonpositional() && std::ranges::all_of(app.get_subcommands({}), [&](const CLI::App* command) {
               const CLI::Option* same = command->get_option_no_throw("--" + option.get_lnames().front());
               return same != nullptr && same->get_description() == option.get_description();
           });
}

}  // namespace

void PrintManual(std::ostream& out, const CLI::App& app) {
    out << ".SH COMMANDS\nEach of them takes\n";
    for (const CLI::Option* option : app.get_subcommands({}).front()->get_options()) {
        if (IsCommon(app, *option)) PrintOption(out, *option);
    }
    for (const CLI::App* command : app.get_subcommands({})) {
        std::string usage = Bold(app.get_name() + " " + command->get_name()) + " [" + Italic("OPTION") + "\\&...]";
        for (const CLI::Option* option : command->get_options()) {
            if (!option->get_positional()) continue;
            const bool isMany = option->get_items_expected_max() > 1;
            const std::string name = Italic(option->get_name()) + (isMany ? "\\&..." : "");
            usage += option->get_required() ? " " + name : " [" + name + "]";
        }
        out << ".SS " << Escaped(command->get_name()) << "\n" << usage << "\n.PP\n";
        out << Escaped(command->get_description()) << ".\n";
        for (const bool isPositional : {true, false}) {
            for (const CLI::Option* option : command->get_options()) {
                if (option->get_positional() == isPositional && !IsCommon(app, *option)) PrintOption(out, *option);
            }
        }
    }
}

}  // namespace App
