#pragma once

#include <string>

#include "prove/Combination.h"

namespace App {

/// The files that combinations are made from, in a folder: a second of moving picture with grain, of music and of
/// subtitles, and what is derived from it.
class Clips {
public:
    static constexpr double kSeconds = 1.0;

    explicit Clips(std::string folder) : folder_(std::move(folder)) {}

    /// The clip itself, which all others are made of. Throws Failure (ConversionFailed).
    void MakeFirst() const;
    /// Makes that footage; only once the clip is there. Throws Failure (ConversionFailed) where ffmpeg does not make
    /// it, and Planner::NotAcceptable (NotInstalled) where there is no encoder for it.
    void Make(const Footage& footage) const;
    /// The file of what was made; empty: it was not.
    std::string Find(const Footage& footage) const;

private:
    std::string Path(const std::string& name) const { return folder_ + "/" + name; }
    /// The clip with a bitmap for its subtitles, or a cover picture.
    void MakeVariant(const Footage& footage) const;
    void MakeAlone(const Footage& footage) const;
    bool MakeByPlan(const Footage& footage, const std::string& source) const;
    void Finish(const Footage& footage, const std::string& made, const std::string& extension) const;

    std::string folder_;
};

}  // namespace App
