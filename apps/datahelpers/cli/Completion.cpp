#include <algorithm>
#include <CLI/CLI.hpp>
#include <ostream>

#include "Kestro/Conf/IFormatCodec.h"
#include "Kestro/Planner/Helpers.h"
#include "Kestro/Planner/Preset.h"

#include "cli/HelpPages.h"
#include "cli/PresetFile.h"

namespace App {
namespace {

using Words = std::vector<std::string>;

constexpr const char* kFiles = ":files";
constexpr const char* kFolders = ":folders";

bool TakesValue(const CLI::Option& option) { return option.get_items_expected_max() > 0; }

/// The option of that name with its dashes, or null.
const CLI::Option* FindOption(const CLI::App& command, const std::string& word) {
    return word.starts_with('-') ? command.get_option_no_throw(word) : nullptr;
}

void AppendNames(const Planner::HelperKind& kind, Words& to) {
    const Words names = Planner::HelperNames(kind);
    to.insert(to.end(), names.begin(), names.end());
}

/// The words of a command line, as far as they are there.
struct Line {
    const CLI::App* command = nullptr;
    Words positionals;
    Words options;                         ///< that are given
    const CLI::Option* pending = nullptr;  ///< whose value the last word is
};

Line Read(const CLI::App& app, const Words& words) {
    Line line;
    bool onlyFiles = false;
    for (std::size_t i = 0; i + 1 < words.size(); ++i) {
        const std::string& word = words[i];
        if (word == "=") continue;  // some shells part --option=value in three
        if (line.pending != nullptr) {
            line.pending = nullptr;
        } else if (line.command == nullptr) {
            if (word.starts_with('-')) continue;
            const auto commands = app.get_subcommands({});
            const auto found = std::ranges::find(commands, word, [](const CLI::App* one) { return one->get_name(); });
            if (found == commands.end()) return line;
            line.command = *found;
        } else if (word == "--") {
            onlyFiles = true;
        } else if (!onlyFiles && word.starts_with('-')) {
            const std::string name = word.substr(0, word.find('='));
            line.options.push_back(name);
            const CLI::Option* option = FindOption(*line.command, name);
            if (option != nullptr && TakesValue(*option) && name == word) line.pending = option;
        } else {
            line.positionals.push_back(word);
        }
    }
    return line;
}

/// What the option or positional is called in the help: FORMAT, PRESET, FILE.
std::string ValueName(const CLI::Option& option) {
    return option.get_positional() ? option.get_name() : option.get_type_name();
}

/// The values that may stand there.
Words Values(const Line& line, const CLI::Option& option) {
    const std::string what = ValueName(option);
    const std::string name = option.get_name();
    Words values;
    if (what == "KIND") {
        const bool isList = line.command->get_name() == "list";
        for (const Planner::HelperKind* kind : Planner::HelperKinds()) {
            values.emplace_back(isList ? kind->plural : kind->name);
        }
        if (isList) values.emplace_back("presets");
    } else if (what == "NAME" && !line.positionals.empty()) {
        for (const Planner::HelperKind* kind : Planner::HelperKinds()) {
            if (line.positionals.front() == kind->name || line.positionals.front() == kind->plural) {
                AppendNames(*kind, values);
            }
        }
    } else if (what == "FORMAT" || what == "CONTAINER") {
        AppendNames(Planner::kFormats, values);
    } else if (what == "CODEC") {
        if (name != "--audio") AppendNames(Planner::kVideoCodecs, values);
        if (name != "--video") AppendNames(Planner::kAudioCodecs, values);
        if (name == "--audio" || name == "--video") {
            values.insert(values.end(), {Planner::Preset::kCopy, Kestro::Conf::IFormatCodec::CODEC_ID_AUTO});
        }
    } else if (what == "PRESET") {
        for (const KnownPreset& preset : ListPresets()) values.push_back(preset.name);
        values.emplace_back(kFiles);
    } else if (what == "TRACKS") {
        values = {"all", "none"};
    } else if (what == "FOLDER") {
        values.emplace_back(kFolders);
    } else if (option.get_positional() || what.starts_with("FILE")) {
        values.emplace_back(kFiles);
    }
    std::ranges::sort(values);
    values.erase(std::unique(values.begin(), values.end()), values.end());
    return values;
}

void PrintValues(std::ostream& out, const Words& values, const std::string& prefix, const std::string& word) {
    for (const std::string& value : values) {
        if (value.starts_with(':')) {
            out << value << "\n";
        } else if (value.starts_with(word)) {
            out << prefix << value << "\n";
        }
    }
}

void PrintOptions(std::ostream& out, const CLI::App& command, const Words& given, const std::string& word) {
    for (const CLI::Option* option : command.get_options()) {
        if (option->get_positional() || option->get_lnames().empty()) continue;
        const std::string name = "--" + option->get_lnames().front();
        const bool isMany = option->get_multi_option_policy() == CLI::MultiOptionPolicy::TakeAll;
        if (!isMany && std::ranges::find(given, name) != given.end()) continue;
        if (name.starts_with(word)) out << name << "\t" << option->get_description() << "\n";
    }
}

/// Where the next word that is no option belongs; null where there is no more place.
const CLI::Option* NextPositional(const Line& line) {
    const CLI::Option* last = nullptr;
    std::size_t place = 0;
    for (const CLI::Option* option : line.command->get_options()) {
        if (!option->get_positional()) continue;
        last = option;
        if (place++ == line.positionals.size()) return option;
    }
    return last != nullptr && last->get_items_expected_max() > 1 ? last : nullptr;
}

}  // namespace

void PrintCompletions(std::ostream& out, const CLI::App& app, const Words& words) {
    std::string word = words.empty() ? std::string() : words.back();
    const Line line = Read(app, words);
    if (line.command == nullptr) {
        for (const CLI::App* command : app.get_subcommands({})) {
            if (command->get_name().starts_with(word)) {
                out << command->get_name() << "\t" << command->get_description() << "\n";
            }
        }
        if (word.starts_with('-')) PrintOptions(out, app, {}, word);
        return;
    }
    if (word == "=") word.clear();
    const std::size_t equals = word.find('=');
    const CLI::Option* joined =
        equals != std::string::npos ? FindOption(*line.command, word.substr(0, equals)) : nullptr;
    if (line.pending != nullptr) {
        PrintValues(out, Values(line, *line.pending), {}, word);
    } else if (joined != nullptr) {
        PrintValues(out, Values(line, *joined), word.substr(0, equals + 1), word.substr(equals + 1));
    } else if (word.starts_with('-')) {
        PrintOptions(out, *line.command, line.options, word);
    } else if (const CLI::Option* positional = NextPositional(line)) {
        PrintValues(out, Values(line, *positional), {}, word);
    }
}

}  // namespace App
