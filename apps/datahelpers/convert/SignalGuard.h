#pragma once

#include <sys/types.h>

#include <csignal>
#include <utility>
#include <vector>

namespace App {

/// While it lives, signals that would end or stop the program are noted instead, so that nothing half done is left
/// behind and no child runs on alone. One at a time.
class SignalGuard {
public:
    SignalGuard();
    ~SignalGuard();
    SignalGuard(const SignalGuard&) = delete;
    SignalGuard& operator=(const SignalGuard&) = delete;

    /// Lets signals in. Throws Failure (128 + its number) for one that asks the program to end; at Ctrl-Z the program
    /// stops here, after these groups of processes, and goes on with them. stopping: what stops a group; programs that
    /// have children themselves are asked by SIGTSTP.
    void Heed(const std::vector<pid_t>& groups = {}, int stopping = SIGSTOP);
    /// The signals that are let in while waiting; what came is told by Heed.
    const sigset_t& WaitMask() const noexcept { return before_; }
    /// For a child, before it executes another program: signals as they were, and none that is meant for it ignored.
    void RestoreInChild() const noexcept;

private:
    void Note(int signal);

    sigset_t before_{};
    std::vector<std::pair<int, struct sigaction>> actions_;
};

}  // namespace App
