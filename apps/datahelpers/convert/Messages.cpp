#include "convert/Messages.h"

#include <utility>

#include "Kestro/Planner/Probe.h"
#include "Kestro/Planner/Text.h"

namespace App {
namespace {

struct Level {
    std::string_view tag;
    bool isError;
};
// As -loglevel level+… puts them.
constexpr Level kLevels[] = {{"[error] ", true}, {"[fatal] ", true},    {"[panic] ", true},  {"[warning] ", false},
                             {"[info] ", false}, {"[verbose] ", false}, {"[debug] ", false}, {"[trace] ", false}};

/// The level of a line, which stands first in it or behind who speaks; encoders that write to the terminal by
/// themselves give none, and tell of their settings.
const Level* FindLevel(std::string_view line) {
    const std::size_t speaker = line.find("] ");
    const std::string_view said = speaker == std::string_view::npos ? line : line.substr(speaker + 2);
    for (const Level& level : kLevels) {
        if (line.starts_with(level.tag) || said.starts_with(level.tag)) return &level;
    }
    return nullptr;
}

void Replace(std::string& text, std::string_view from, std::string_view to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
}

void Keep(std::deque<std::string>& lines, const std::string& line) {
    // Enough to see what went wrong.
    constexpr std::size_t kKept = 10;
    lines.push_back(line);
    if (lines.size() > kKept) lines.pop_front();
}

}  // namespace

void Messages::Read(std::string_view line) {
    opened_.Read(line);
    const Level* level = FindLevel(line);
    if (level != nullptr && !level->isError) return;
    if (line.find(temporary_) != std::string_view::npos) outputFailed_ = true;
    std::string text(line);
    Replace(text, Kestro::Planner::FileUrl(temporary_), output_);
    if (level != nullptr) text.erase(text.find(level->tag), level->tag.size());
    text = Kestro::Planner::Printable(text);
    Keep(last_, text);
    // The muxer that complains of timestamps which go back mends them itself.
    if (level != nullptr && text.find("monoton") == std::string::npos) Keep(errors_, text);
}

}  // namespace App
