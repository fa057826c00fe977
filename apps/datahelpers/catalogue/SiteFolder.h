#pragma once

#include <string>
#include <vector>

#include "catalogue/Site.h"

namespace App::Catalogue {

/// Whether the files can be written there. Throws Failure (WrongUsage): it is no folder, or has other things in it than
/// a catalogue and overwrite is false.
void CheckSiteFolder(const std::string& path, bool overwrite);

/// Writes all files, or none: they are complete before the first of them appears in the folder. What the folder has
/// beside them stays. Throws Failure (ConversionFailed), or for a signal that ends the program.
void WriteSite(const std::string& path, const std::vector<SiteFile>& files);

}  // namespace App::Catalogue
