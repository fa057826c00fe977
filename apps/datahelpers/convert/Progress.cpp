#include "convert/Progress.h"

#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>

#include "report/Text.h"

namespace App {
namespace {

// Where the length is unknown, a plain line comes this often.
constexpr std::chrono::seconds kLineInterval{10};

std::string_view Trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(' ');
    return begin == std::string_view::npos ? std::string_view() : text.substr(begin);
}

/// FFmpeg's "2.09e+03x" without powers of ten; empty where it cannot tell yet.
std::string SpeedText(std::string_view speed) {
    double times = 0.0;
    const auto read = std::from_chars(speed.data(), speed.data() + speed.size(), times);
    if (read.ec != std::errc() || !(times < 1e9)) return {};
    char text[32];
    std::snprintf(text, sizeof text, times < 100.0 ? "%.3gx" : "%.0fx", times);
    return text;
}

}  // namespace

Progress::Progress(Style style, std::optional<double> duration, std::size_t passes)
    : style_(style), duration_(duration), passes_(passes), shown_(Clock::now()) {}

Progress::~Progress() {
    if (barIsDrawn_) std::fputs("\r\x1b[K", stderr);  // The line is free for what follows.
}

void Progress::BeginPass() {
    ++pass_;
    seconds_ = 0.0;
    speed_.clear();
}

void Progress::Read(std::string_view line) {
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) return;
    const std::string_view key = line.substr(0, equals);
    const std::string_view value = Trimmed(line.substr(equals + 1));
    if (key == "out_time_us") {
        int64_t microseconds = 0;
        const auto read = std::from_chars(value.data(), value.data() + value.size(), microseconds);
        if (read.ec == std::errc() && microseconds > 0) seconds_ = static_cast<double>(microseconds) / 1e6;
    } else if (key == "speed") {
        speed_ = SpeedText(value);
    } else if (key == "progress") {  // the last of each report
        if (value == "end" && duration_) seconds_ = *duration_;
        Show();
    }
}

void Progress::Show() {
    if (style_ == Style::None) return;
    std::string text = passes_ > 1 ? "pass " + std::to_string(pass_) + "/" + std::to_string(passes_) + "  " : "";
    text += ClockTime(seconds_);
    double part = 0.0;
    if (duration_) {
        text += " of " + ClockTime(*duration_);
        const double inPass = std::clamp(seconds_ / std::max(*duration_, 1e-3), 0.0, 1.0);
        part = (static_cast<double>(pass_) - 1.0 + inPass) / static_cast<double>(passes_);
    }
    if (style_ == Style::Parts) {
        std::fprintf(stderr, "%s%.3f\n", kPart, part);
        return;
    }
    if (!speed_.empty()) text += "  " + speed_;

    if (style_ == Style::Bar) {
        ShowBar(part, text);
        return;
    }
    if (duration_) {
        const int tenth = static_cast<int>(std::floor(part * 10.0 + 1e-9));
        if (tenth <= tenth_) return;
        tenth_ = tenth;
        std::fprintf(stderr, "%3d %%  %s\n", 10 * tenth, text.c_str());
    } else if (Clock::now() - shown_ >= kLineInterval) {
        shown_ = Clock::now();
        std::fprintf(stderr, "%s\n", text.c_str());
    }
}

void Progress::ShowBar(double part, const std::string& text) {
    std::string line = text;
    const std::size_t width = TerminalWidth(STDERR_FILENO) - 1;
    constexpr std::size_t kAround = 11;  // "100 %  [" before the bar, "]  " behind it
    if (duration_ && width > text.size() + kAround + 4) {
        const std::size_t cells = std::min<std::size_t>(50, width - text.size() - kAround);
        const auto full = static_cast<std::size_t>(std::lround(part * static_cast<double>(cells)));
        char percent[16];
        std::snprintf(percent, sizeof percent, "%3d %%", static_cast<int>(std::floor(part * 100.0)));
        line = std::string(percent) + "  [" + std::string(full, '#') + std::string(cells - full, '.') + "]  " + text;
    }
    std::fprintf(stderr, "\r%s\x1b[K", line.substr(0, width).c_str());
    std::fflush(stderr);
    barIsDrawn_ = true;
}

}  // namespace App
