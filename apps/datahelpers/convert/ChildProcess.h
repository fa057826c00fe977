#pragma once

#include <csignal>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "convert/SignalGuard.h"

namespace App {

/// How a child ended.
struct ChildEnd {
    bool exited = false;  ///< by itself, not by a signal
    int status = 0;       ///< its exit status, or the signal
};

/// What to run, a program by its argument vector and without a shell, and who hears of it. Its standard input is empty.
struct ChildJob {
    std::string program;
    std::vector<std::string> arguments;
    std::function<int()> run;  ///< instead of a program: what this one does in the child, and its exit status
    std::function<void(std::string_view)> onOutput;  ///< every line
    std::function<void(std::string_view)> onError;   ///< every line
    std::function<void(ChildEnd)> onEnd;
};

/// Children that run side by side, each the head of a process group of its own. A group ends as a whole with its head,
/// and all of them with this object.
class Children {
public:
    /// ending: the signal that ends what still runs; other than SIGKILL it leaves a child the time that it needs.
    explicit Children(SignalGuard& signals, int ending = SIGKILL);
    ~Children();
    Children(const Children&) = delete;
    Children& operator=(const Children&) = delete;

    /// Throws Failure (ConversionFailed) when it cannot be started.
    void Start(ChildJob job);
    std::size_t Running() const noexcept { return children_.size(); }
    /// Until one has something to tell. Throws Failure as SignalGuard::Heed, and what the listeners throw.
    void Wait();

private:
    class Child;

    SignalGuard& signals_;
    int ending_;
    std::vector<std::unique_ptr<Child>> children_;
};

/// The program's file on $PATH; empty when it is not there.
std::string FindProgram(const std::string& name);

/// Runs one child until it ends.
ChildEnd RunChild(ChildJob job, SignalGuard& signals);

}  // namespace App
