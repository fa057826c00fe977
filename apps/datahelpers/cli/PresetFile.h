#pragma once

#include <string>
#include <vector>

#include "Kestro/Planner/Preset.h"

#include "cli/Arguments.h"

namespace App {

/// A preset that can be asked for by its name.
struct KnownPreset {
    std::string name;
    std::string file;
};

/// Those of the user's configuration folder, then the installed ones that they do not hide; each kind by name.
std::vector<KnownPreset> ListPresets();

/// The file of a preset: one of that path, or else the known one of that name. Throws Failure (WrongUsage).
std::string FindPreset(const std::string& preset);

/// A whole text of at most a mebibyte. what: of messages, "preset". Throws Failure (WrongUsage).
std::string ReadText(const std::string& path, const std::string& what);

/// The preset that the command line asks for. Throws Failure (WrongUsage) for a file that cannot be read and for a
/// change that is none; what is wrong in the preset itself is told by Planner::Check.
Planner::Preset ReadPreset(const PlanOptions& options);

}  // namespace App
