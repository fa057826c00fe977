#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace App {

/// What `prove` is asked for.
struct ProveOptions {
    std::string file;                  ///< rows are appended to it, and those in it are not done again; or empty
    std::size_t jobs = 0;              ///< at once; 0: as many as there are cores
    unsigned timeout = 60;             ///< seconds for a row
    bool isSample = false;             ///< a few rows that touch every helper
    std::vector<std::string> only;     ///< rows whose name has one of these texts; empty: all
    std::vector<std::string> against;  ///< proof files: what they call proven must still be
    std::vector<std::string> pages;    ///< proof files to write a page of, in place of proving
    std::string explained;             ///< with pages: a file that explains contradictions, or empty
};

}  // namespace App
