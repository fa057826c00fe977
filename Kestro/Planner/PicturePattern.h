#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Kestro/Planner/MediaInfo.h"

namespace Kestro::Planner {

/// The name of a numbered sequence of pictures: "frames/%06d.png". In the last part of the path, %d stands for a
/// number, %06d for one of six digits and more, %% for a percent sign; the folders are taken as they are.
class PicturePattern {
public:
    /// Throws NotAcceptable (UnreadableInput) for a path without a number or with several.
    explicit PicturePattern(const std::string& path);

    /// The pictures that are there. Throws NotAcceptable (UnreadableInput) where there are none, or one is missing.
    PictureSequence Find(const boost::rational<int64_t>& fps) const;

    /// The pattern as FFmpeg takes it.
    std::string Url() const;
    /// Whether FFmpeg's name of a file is that of a picture of it.
    bool Has(std::string_view url) const;

private:
    [[noreturn]] void ThrowUnreadable(const std::string& reason) const;
    std::string FileName(int64_t number) const;
    std::optional<int64_t> NumberOf(std::string_view name) const;

    std::string path_;
    std::string folder_;  ///< with its last slash, or empty
    std::string before_;  ///< the number
    std::string after_;
    std::size_t digits_ = 1;  ///< at least
};

}  // namespace Kestro::Planner
