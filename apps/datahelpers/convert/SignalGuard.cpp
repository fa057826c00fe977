#include "convert/SignalGuard.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <string>

#include "cli/Failure.h"

namespace App {
namespace {

volatile std::sig_atomic_t endingSignal = 0;
volatile std::sig_atomic_t stopAsked = 0;

extern "C" void NoteSignal(int signal) {
    if (signal == SIGTSTP) {
        stopAsked = 1;
    } else {
        endingSignal = signal;
    }
}

// The signals that end a process by default and are no fault of its own; the real-time ones are added where they are
// used.
constexpr std::array kEndingSignals{SIGINT,  SIGTERM, SIGHUP,    SIGQUIT, SIGALRM, SIGUSR1,  SIGUSR2,
                                    SIGXCPU, SIGPROF, SIGVTALRM, SIGPOLL, SIGPWR,  SIGSTKFLT};

// A reader of the output who has gone away, or a limit to a file's size, is told by write.
constexpr std::array kIgnoredSignals{SIGPIPE, SIGXFSZ};

struct sigaction ActionOf(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    return action;
}

bool IsIgnored(int signal) {
    struct sigaction action {};
    sigaction(signal, nullptr, &action);
    return action.sa_handler == SIG_IGN;
}

}  // namespace

SignalGuard::SignalGuard() {
    endingSignal = 0;
    stopAsked = 0;
    std::vector<int> noted(kEndingSignals.begin(), kEndingSignals.end());
    for (int signal = SIGRTMIN; signal <= SIGRTMAX; ++signal) noted.push_back(signal);
    // As nohup has it: a lost terminal does not matter. Nor does Ctrl-Z where no shell takes the program back.
    for (const int signal : {SIGHUP, SIGTSTP}) {
        std::erase(noted, signal);
        if (!IsIgnored(signal)) noted.push_back(signal);
    }
    sigset_t blocked;
    sigemptyset(&blocked);
    for (const int signal : noted) sigaddset(&blocked, signal);
    sigprocmask(SIG_BLOCK, &blocked, &before_);
    for (const int signal : noted) Note(signal);
    const struct sigaction ignore = ActionOf(SIG_IGN);
    for (const int signal : kIgnoredSignals) {
        struct sigaction before {};
        sigaction(signal, &ignore, &before);
        actions_.emplace_back(signal, before);
    }
}

void SignalGuard::Note(int signal) {
    const struct sigaction note = ActionOf(NoteSignal);
    struct sigaction before {};
    sigaction(signal, &note, &before);
    actions_.emplace_back(signal, before);
    // They must get through while waiting, even where the caller blocks them.
    sigdelset(&before_, signal);
}

SignalGuard::~SignalGuard() {
    const timespec now{};
    ppoll(nullptr, 0, &now, &before_);  // takes signals that still wait while they are only noted
    for (const auto& [signal, action] : actions_) sigaction(signal, &action, nullptr);
    sigprocmask(SIG_SETMASK, &before_, nullptr);
}

void SignalGuard::Heed(const std::vector<pid_t>& groups, int stopping) {
    const timespec now{};
    ppoll(nullptr, 0, &now, &before_);
    if (const int signal = endingSignal; signal != 0) {
        throw Failure(static_cast<ExitStatus>(128 + signal),
                      std::string("Interrupted (") + strsignal(signal) + "); nothing was written.");
    }
    if (stopAsked == 0) return;
    stopAsked = 0;
    for (const pid_t group : groups) kill(-group, stopping);
    // By the signal's own action, so that the shell sees it, and nothing happens where there is none.
    const struct sigaction standard = ActionOf(SIG_DFL);
    struct sigaction noting {};
    sigset_t stop;
    sigset_t blocked;
    sigemptyset(&stop);
    sigaddset(&stop, SIGTSTP);
    sigaction(SIGTSTP, &standard, &noting);
    raise(SIGTSTP);
    sigprocmask(SIG_UNBLOCK, &stop, &blocked);  // Here it stands still until it is let go on.
    sigprocmask(SIG_SETMASK, &blocked, nullptr);
    sigaction(SIGTSTP, &noting, nullptr);
    for (const pid_t group : groups) kill(-group, SIGCONT);
}

void SignalGuard::RestoreInChild() const noexcept {
    struct sigaction standard {};
    standard.sa_handler = SIG_DFL;
    for (const auto& [signal, action] : actions_) {
        // What is meant for this program is passed on by it; the rest is as its caller had it.
        const bool isIgnored = action.sa_handler == SIG_IGN;
        sigaction(signal, isIgnored && signal == SIGXFSZ ? &action : &standard, nullptr);
    }
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

}  // namespace App
