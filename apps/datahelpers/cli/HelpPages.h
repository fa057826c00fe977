#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace App {

// Commands that people do not type, for the manual page and the completions of shells.
constexpr const char* kManualCommand = "__manual";
constexpr const char* kCompleteCommand = "__complete";

/// The commands and options as sections of a manual page (man(7)).
void PrintManual(std::ostream& out, const CLI::App& app);

/// What may stand in the place of the last word, a line each: the word, a tab and its help. A line ":files" or
/// ":folders" stands for those of the shell. words: the line's, without the program's name.
void PrintCompletions(std::ostream& out, const CLI::App& app, const std::vector<std::string>& words);

}  // namespace App
