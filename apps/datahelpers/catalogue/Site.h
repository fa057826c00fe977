#pragma once

#include <string>
#include <vector>

#include "catalogue/Knowledge.h"

namespace App::Catalogue {

/// One file of the folder.
struct SiteFile {
    std::string path;  ///< in the folder, with "/" before its name
    std::string content;
};

/// All pages, and what they need.
std::vector<SiteFile> MakeSite(const Knowledge& knowledge);

}  // namespace App::Catalogue
