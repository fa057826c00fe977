#pragma once

#include <string>

#include "Kestro/Planner/Export.h"
#include "Kestro/Planner/Plan.h"

/// What the names of media files say of their containers.
namespace Kestro::Planner {

/// The container whose files are named so ("film.mkv"), or empty.
KESTRO_PLANNER_API std::string ContainerOfFileName(const std::string& path);

/// How the files of a container are named: "mkv".
KESTRO_PLANNER_API std::string FileExtension(const std::string& container);

/// A sentence for an output whose name promises another container than the plan's; empty where it does not.
KESTRO_PLANNER_API std::string NoteOnFileName(const Plan& plan, const std::string& output);

}  // namespace Kestro::Planner
