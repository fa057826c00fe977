#pragma once

#include <iosfwd>

namespace CLI {
class App;
}

namespace App {

// Commands that people do not type.
constexpr const char* kManualCommand = "__manual";

/// The commands and options as sections of a manual page (man(7)).
void PrintManual(std::ostream& out, const CLI::App& app);

}  // namespace App
