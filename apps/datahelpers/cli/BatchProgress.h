#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace App {

/// Shows on standard error how far many conversions are: on a terminal a bar for each that runs and one for all of
/// them, otherwise a line for each that has ended.
class BatchProgress {
public:
    struct Job {
        std::string name;
        double part = 0.0;  ///< 0..1
    };
    enum class Style { Bars, Lines, None };

    BatchProgress(Style style, std::size_t count) : style_(style), count_(count) {}
    ~BatchProgress() { Clear(); }
    BatchProgress(const BatchProgress&) = delete;
    BatchProgress& operator=(const BatchProgress&) = delete;

    void Show(const std::vector<Job>& running);
    /// what: how one of them ended.
    void Ended(const std::string& name, const std::string& what);

private:
    using Clock = std::chrono::steady_clock;

    void Clear();

    Style style_;
    std::size_t count_;
    std::size_t ended_ = 0;
    std::size_t drawn_ = 0;  ///< lines on the terminal
    Clock::time_point shown_;
};

}  // namespace App
