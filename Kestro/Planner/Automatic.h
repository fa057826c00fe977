#pragma once

#include <string>
#include <vector>

#include "Kestro/Core/Property.h"
#include "Kestro/Planner/Export.h"

/// The settings of a stream that the word `auto` leaves to the program: those for which the library's automatic helpers
/// offer a value beside the others. Which codec `auto` is, the preset's container says.
namespace Kestro::Planner {

struct AutomaticSetting {
    std::string path;              ///< below the stream
    Kestro::Core::Property value;  ///< what `auto` stands for
};

const std::vector<AutomaticSetting>& AutomaticSettings();
/// Null for a setting that is not left to the program.
KESTRO_PLANNER_API const AutomaticSetting* FindAutomaticSetting(const std::string& path);

/// Puts the values that they stand for in the place of the words.
void ReadAutomatic(Kestro::Core::Property& stream);

}  // namespace Kestro::Planner
