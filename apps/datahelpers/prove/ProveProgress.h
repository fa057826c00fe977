#pragma once

#include <chrono>
#include <cstddef>

#include "prove/Proof.h"

namespace App {

/// Shows on standard error how far a proof is: on a terminal one line that changes, otherwise a line each tenth; and a
/// line for each contradiction as it is found.
class ProveProgress {
public:
    enum class Style { Line, Tenths, None };
    static Style StyleOf(int descriptor);

    ProveProgress(Style style, std::size_t count) : style_(style), count_(count) {}
    ~ProveProgress() { Clear(); }
    ProveProgress(const ProveProgress&) = delete;
    ProveProgress& operator=(const ProveProgress&) = delete;

    void Done(const Proof& proof);

private:
    using Clock = std::chrono::steady_clock;

    void Clear() const;
    void Show(const Proof& last) const;

    Style style_;
    std::size_t count_;
    std::size_t done_ = 0;
    std::size_t contradictions_ = 0;
    Clock::time_point begun_ = Clock::now();
};

}  // namespace App
