#include "prove/ProveProgress.h"

#include <unistd.h>

#include <iostream>

#include "report/Text.h"

namespace App {

ProveProgress::Style ProveProgress::StyleOf(int descriptor) {
    return isatty(descriptor) != 0 ? Style::Line : Style::Tenths;
}

void ProveProgress::Done(const Proof& proof) {
    ++done_;
    if (style_ == Style::None) return;
    if (proof.verdict == Verdict::Contradicts) {
        ++contradictions_;
        Clear();
        std::cerr << "contradicts: " << proof.id << ": " << proof.why << "\n";
    }
    const bool isTenth = 10 * done_ / count_ != 10 * (done_ - 1) / count_;
    if (style_ == Style::Line || isTenth) Show(proof);
}

void ProveProgress::Clear() const {
    if (style_ == Style::Line) std::cerr << "\r\x1b[K" << std::flush;
}

void ProveProgress::Show(const Proof& last) const {
    const double seconds = std::chrono::duration<double>(Clock::now() - begun_).count();
    const double left = seconds / static_cast<double>(done_) * static_cast<double>(count_ - done_);
    std::string text = std::to_string(done_) + " of " + std::to_string(count_) + " rows, " +
                       std::to_string(contradictions_) + " contradict, " + ClockTime(left) + " left";
    if (style_ == Style::Tenths) {
        std::cerr << text << std::endl;
        return;
    }
    const std::size_t width = TerminalWidth(STDERR_FILENO);
    text += "  " + last.id;
    std::cerr << "\r\x1b[K" << text.substr(0, width - 1) << std::flush;
}

}  // namespace App
