#pragma once

#include <array>
#include <string_view>

namespace App::Catalogue {

/// A file of assets/, as it was when the program was built.
struct Asset {
    const char* name;
    std::string_view content;
};

extern const std::array<Asset, 4> kAssets;

}  // namespace App::Catalogue
