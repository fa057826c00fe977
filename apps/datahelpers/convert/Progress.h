#pragma once

#include <chrono>
#include <optional>
#include <string_view>

namespace App {

/// Shows on standard error how far a conversion is: a bar on a terminal, a plain line every tenth otherwise,
/// and for this program itself, where it runs several at once, the part that is done: "part 0.532".
class Progress {
public:
    enum class Style { Bar, Lines, Parts, None };

    static constexpr const char* kPart = "part ";

    /// duration: of the input in seconds, if it is known. passes: the number of runs over it.
    Progress(Style style, std::optional<double> duration, std::size_t passes);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void BeginPass();
    /// One line of FFmpeg's `-progress`: "key=value".
    void Read(std::string_view line);

private:
    using Clock = std::chrono::steady_clock;

    void Show();
    void ShowBar(double part, const std::string& text);

    Style style_;
    std::optional<double> duration_;
    std::size_t passes_;
    std::size_t pass_ = 0;
    double seconds_ = 0.0;
    std::string speed_;
    int tenth_ = 0;
    Clock::time_point shown_;
    bool barIsDrawn_ = false;
};

}  // namespace App
