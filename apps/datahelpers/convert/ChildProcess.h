#pragma once

#include <csignal>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace App {

/// While it lives, signals that would end the program are noted instead, so that nothing half done is left behind.
/// One at a time.
class SignalGuard {
public:
    SignalGuard();
    ~SignalGuard();
    SignalGuard(const SignalGuard&) = delete;
    SignalGuard& operator=(const SignalGuard&) = delete;

    /// The signal that came, or 0. Signals are let in only here and while a child runs.
    int Caught();
    /// The signals that are let in while waiting.
    const sigset_t& WaitMask() const noexcept { return before_; }

private:
    sigset_t before_{};
    std::vector<std::pair<int, struct sigaction>> actions_;
};

/// How a child ended.
struct ChildEnd {
    bool exited = false;  ///< by itself, not by a signal
    int status = 0;       ///< its exit status, or the signal
};

/// The program's file on $PATH; empty when it is not there.
std::string FindProgram(const std::string& name);

/// Runs a program, with its argument vector and without a shell, until it ends; every line that it writes is passed
/// on. Its standard input is empty. When a signal asks this program to end, the child is killed, and Failure
/// (ConversionFailed) thrown; also when it cannot be started.
ChildEnd RunChild(const std::string& program, const std::vector<std::string>& arguments, SignalGuard& signals,
                  const std::function<void(std::string_view)>& onOutput,
                  const std::function<void(std::string_view)>& onError);

/// Throws Failure (ConversionFailed) when a signal asks the program to end.
void StopIfAsked(SignalGuard& signals);

}  // namespace App
