#include "cli/BatchProgress.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "Kestro/Planner/Text.h"

#include "report/Text.h"

namespace App {
namespace {

std::string BarLine(double part, const std::string& name, std::size_t width) {
    constexpr std::size_t kCells = 20;
    const auto full = static_cast<std::size_t>(std::lround(std::clamp(part, 0.0, 1.0) * kCells));
    char percent[16];
    std::snprintf(percent, sizeof percent, "%3d %%  ", static_cast<int>(std::floor(part * 100.0)));
    const std::string line = percent + ("[" + std::string(full, '#')) + std::string(kCells - full, '.') + "]  " + name;
    return Kestro::Planner::Printable(line.substr(0, width));
}

}  // namespace

void BatchProgress::Clear() {
    for (; drawn_ > 0; --drawn_) std::fputs("\x1b[A\x1b[2K", stderr);
}

void BatchProgress::Show(const std::vector<Job>& running) {
    constexpr std::chrono::milliseconds kInterval{100};
    if (style_ != Style::Bars || (drawn_ > 0 && Clock::now() - shown_ < kInterval)) return;
    shown_ = Clock::now();
    Clear();
    const std::size_t width = TerminalWidth(STDERR_FILENO) - 1;
    auto done = static_cast<double>(ended_);
    for (const Job& job : running) {
        done += job.part;
        std::fprintf(stderr, "%s\n", BarLine(job.part, job.name, width).c_str());
    }
    const std::string sum = std::to_string(ended_) + " of " + std::to_string(count_);
    std::fprintf(stderr, "%s\n", BarLine(done / static_cast<double>(count_), sum, width).c_str());
    drawn_ = running.size() + 1;
}

void BatchProgress::Ended(const std::string& name, const std::string& what) {
    ++ended_;
    if (style_ != Style::Lines) return;
    std::fprintf(stderr, "%zu of %zu  %s: %s\n", ended_, count_, Kestro::Planner::Printable(name).c_str(),
                 Kestro::Planner::Printable(what).c_str());
}

}  // namespace App
