#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/Knowledge.h"

namespace App::Catalogue {

/// The bitrates that an encoder's helper answers with: a line for each series, a value for each point.
struct Curve {
    struct Series {
        /// "stereo: default"
        std::string Title() const { return words.empty() ? name : name + ": " + words; }

        std::string name;                              ///< of what: "quality 75", "5.1, stereo"
        std::string words = {};                        ///< which of its bitrates: "default"; empty where there is one
        std::vector<std::optional<int64_t>> bitrates;  ///< bit/s; none: the encoder does not do that
    };
    /// Points and series of one table.
    struct Block {
        std::string name;  ///< "30 frames/s"; empty where there is one block
        std::vector<std::string> points;
        std::vector<Series> series;
    };
    std::string pointsAre;      ///< "frame size"
    std::vector<Block> blocks;  ///< the first is drawn

    bool IsFlat() const;  ///< every line of the first block is level
};

/// None where the helper gives no bitrates.
std::optional<Curve> BitrateCurve(const Codec& codec);

}  // namespace App::Catalogue
