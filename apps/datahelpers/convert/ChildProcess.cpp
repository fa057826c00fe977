#include "convert/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "Kestro/Planner/Text.h"

#include "cli/Failure.h"

namespace App {
namespace {

using Kestro::Planner::Printable;

volatile std::sig_atomic_t caughtSignal = 0;

extern "C" void NoteSignal(int signal) { caughtSignal = signal; }

constexpr std::array kEndingSignals{SIGINT, SIGTERM, SIGHUP};

[[noreturn]] void ThrowErrno(const std::string& what) {
    throw Failure(ExitStatus::ConversionFailed, what + ": " + std::strerror(errno) + ".");
}

/// Both ends of a pipe; each is closed at last.
class Pipe {
public:
    Pipe() {
        if (pipe2(ends_.data(), O_CLOEXEC) != 0) ThrowErrno("Cannot make a pipe");
    }
    ~Pipe() {
        CloseWriting();
        if (ends_[0] >= 0) close(ends_[0]);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    int Reading() const { return ends_[0]; }
    int Writing() const { return ends_[1]; }
    void CloseWriting() {
        if (ends_[1] >= 0) close(ends_[1]);
        ends_[1] = -1;
    }

private:
    std::array<int, 2> ends_{-1, -1};
};

/// Cuts what comes out of a pipe into lines.
class LineReader {
public:
    LineReader(int descriptor, const std::function<void(std::string_view)>& onLine)
        : descriptor_(descriptor), onLine_(&onLine) {}

    int Descriptor() const { return descriptor_; }

    /// False at the end.
    bool Read() {
        constexpr std::size_t kLongestLine = 1 << 16;
        char buffer[4096];
        const ssize_t count = read(descriptor_, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR) return true;
        if (count <= 0) {
            if (!rest_.empty()) (*onLine_)(rest_);
            return false;
        }
        rest_.append(buffer, static_cast<std::size_t>(count));
        std::size_t begin = 0;
        for (std::size_t end = 0; (end = rest_.find('\n', begin)) != std::string::npos; begin = end + 1) {
            (*onLine_)(std::string_view(rest_).substr(begin, end - begin));
        }
        rest_.erase(0, begin);
        if (rest_.size() > kLongestLine) rest_.clear();
        return true;
    }

private:
    int descriptor_;
    const std::function<void(std::string_view)>* onLine_;
    std::string rest_;
};

/// The child's half after fork: only calls that are safe there.
[[noreturn]] void Exec(const char* program, char* const* arguments, int output, int error, pid_t parent) {
    // A group of its own: the terminal's Ctrl-C is for the parent, who ends the child.
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(127);
    const int input = open("/dev/null", O_RDONLY);
    if (input < 0 || dup2(input, STDIN_FILENO) < 0 || dup2(output, STDOUT_FILENO) < 0 ||
        dup2(error, STDERR_FILENO) < 0) {
        _exit(127);
    }
    struct sigaction standard {};
    standard.sa_handler = SIG_DFL;
    for (const int signal : kEndingSignals) sigaction(signal, &standard, nullptr);
    sigaction(SIGPIPE, &standard, nullptr);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    execv(program, arguments);
    _exit(127);
}

/// Kills and reaps the child if nobody did.
class Child {
public:
    explicit Child(pid_t pid) : pid_(pid) {}
    ~Child() {
        if (pid_ <= 0) return;
        kill(pid_, SIGKILL);
        Wait();
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    ChildEnd Wait() {
        int status = 0;
        while (waitpid(pid_, &status, 0) < 0 && errno == EINTR) {
        }
        pid_ = 0;
        if (WIFEXITED(status)) return {true, WEXITSTATUS(status)};
        return {false, WTERMSIG(status)};
    }

private:
    pid_t pid_;
};

}  // namespace

SignalGuard::SignalGuard() {
    caughtSignal = 0;
    sigset_t blocked;
    sigemptyset(&blocked);
    for (const int signal : kEndingSignals) sigaddset(&blocked, signal);
    sigprocmask(SIG_BLOCK, &blocked, &before_);
    for (const int signal : kEndingSignals) {
        struct sigaction before {};
        sigaction(signal, nullptr, &before);
        // As nohup has it: a lost terminal does not matter. The others are always meant.
        if (signal == SIGHUP && before.sa_handler == SIG_IGN) continue;
        struct sigaction action {};
        action.sa_handler = NoteSignal;
        sigemptyset(&action.sa_mask);
        sigaction(signal, &action, nullptr);
        actions_.emplace_back(signal, before);
        // They must get through while waiting, even where the caller blocks them.
        sigdelset(&before_, signal);
    }
    // A reader of the output who has gone away must not end the program half way.
    struct sigaction ignore {};
    struct sigaction before {};
    ignore.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &ignore, &before);
    actions_.emplace_back(SIGPIPE, before);
}

SignalGuard::~SignalGuard() {
    Caught();
    for (const auto& [signal, action] : actions_) sigaction(signal, &action, nullptr);
    sigprocmask(SIG_SETMASK, &before_, nullptr);
}

int SignalGuard::Caught() {
    const timespec now{};
    ppoll(nullptr, 0, &now, &before_);
    return caughtSignal;
}

void StopIfAsked(SignalGuard& signals) {
    if (const int signal = signals.Caught()) {
        throw Failure(ExitStatus::ConversionFailed,
                      std::string("Interrupted (") + strsignal(signal) + "); nothing was written.");
    }
}

std::string FindProgram(const std::string& name) {
    const char* variable = std::getenv("PATH");
    const std::string path = variable != nullptr ? variable : "/usr/local/bin:/usr/bin:/bin";
    std::size_t begin = 0;
    for (std::size_t end = 0; end != std::string::npos; begin = end + 1) {
        end = path.find(':', begin);
        const std::string directory = path.substr(begin, end - begin);
        std::string candidate = (directory.empty() ? "." : directory) + "/" + name;
        struct stat status {};
        if (stat(candidate.c_str(), &status) == 0 && S_ISREG(status.st_mode) && access(candidate.c_str(), X_OK) == 0) {
            return candidate;
        }
    }
    return {};
}

ChildEnd RunChild(const std::string& program, const std::vector<std::string>& arguments, SignalGuard& signals,
                  const std::function<void(std::string_view)>& onOutput,
                  const std::function<void(std::string_view)>& onError) {
    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);

    Pipe output;
    Pipe error;
    const pid_t parent = getpid();
    const pid_t pid = fork();
    if (pid < 0) ThrowErrno("Cannot start " + Printable(program));
    if (pid == 0) Exec(program.c_str(), argv.data(), output.Writing(), error.Writing(), parent);
    Child child(pid);
    output.CloseWriting();
    error.CloseWriting();

    std::vector<LineReader> readers{{output.Reading(), onOutput}, {error.Reading(), onError}};
    while (!readers.empty()) {
        std::vector<pollfd> polled;
        polled.reserve(readers.size());
        for (const LineReader& reader : readers) polled.push_back({reader.Descriptor(), POLLIN, 0});
        const int ready = ppoll(polled.data(), polled.size(), nullptr, &signals.WaitMask());
        if (ready < 0 && errno != EINTR) ThrowErrno("Cannot wait for " + Printable(program));
        StopIfAsked(signals);
        if (ready <= 0) continue;
        for (std::size_t i = polled.size(); i-- > 0;) {
            if (polled[i].revents != 0 && !readers[i].Read())
                readers.erase(readers.begin() + static_cast<std::ptrdiff_t>(i));
        }
    }
    return child.Wait();
}

}  // namespace App
