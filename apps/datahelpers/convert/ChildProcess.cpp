#include "convert/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <span>
#include <utility>

#include "Kestro/Planner/Text.h"

#include "cli/Failure.h"

namespace App {
namespace {

using Kestro::Planner::Printable;

[[noreturn]] void ThrowErrno(const std::string& what) {
    throw Failure(ExitStatus::ConversionFailed, what + ": " + std::strerror(errno) + ".");
}

/// Both ends of a pipe; each is closed at last.
class Pipe {
public:
    Pipe() {
        if (pipe2(ends_.data(), O_CLOEXEC) != 0) ThrowErrno("Cannot make a pipe");
        // What a child's own children may write later is not waited for.
        fcntl(ends_[0], F_SETFL, O_NONBLOCK);
    }
    ~Pipe() {
        CloseReading();
        CloseWriting();
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    int Reading() const { return ends_[0]; }
    int Writing() const { return ends_[1]; }
    void CloseReading() { Close(ends_[0]); }
    void CloseWriting() { Close(ends_[1]); }

private:
    static void Close(int& end) {
        if (end >= 0) close(end);
        end = -1;
    }

    std::array<int, 2> ends_{-1, -1};
};

/// Cuts what comes out of a pipe into lines.
class LineReader {
public:
    explicit LineReader(std::function<void(std::string_view)> onLine) : onLine_(std::move(onLine)) {}

    Pipe& Source() { return pipe_; }

    /// What is there now; at the end the pipe is closed. False when there is nothing to read.
    bool Read() {
        constexpr std::size_t kLongestLine = 1 << 16;
        char buffer[4096];
        const ssize_t count = read(pipe_.Reading(), buffer, sizeof buffer);
        if (count < 0 && errno == EINTR) return true;
        if (count < 0 && errno == EAGAIN) return false;
        if (count <= 0) {
            Finish();
            return false;
        }
        rest_.append(buffer, static_cast<std::size_t>(count));
        std::size_t begin = 0;
        for (std::size_t end = 0; (end = rest_.find('\n', begin)) != std::string::npos; begin = end + 1) {
            onLine_(std::string_view(rest_).substr(begin, end - begin));
        }
        rest_.erase(0, begin);
        if (rest_.size() > kLongestLine) rest_.clear();
        return true;
    }
    void Finish() {
        pipe_.CloseReading();
        if (!rest_.empty()) onLine_(std::exchange(rest_, {}));
    }

private:
    Pipe pipe_;
    std::function<void(std::string_view)> onLine_;
    std::string rest_;
};

}  // namespace

// Boost.Process 1.74 reaps the head before its group can be killed: by then the number may be another's.
class Children::Child {
public:
    Child(ChildJob job, const SignalGuard& signals, int ending)
        : job_(std::move(job)), output_(job_.onOutput), error_(job_.onError), ending_(ending) {
        std::vector<char*> argv{job_.program.data()};
        for (std::string& argument : job_.arguments) argv.push_back(argument.data());
        argv.push_back(nullptr);
        const pid_t parent = getpid();
        pid_ = fork();
        if (pid_ < 0) ThrowErrno("Cannot start " + Printable(job_.program));
        if (pid_ == 0) Exec(argv.data(), signals, parent);
        // From both sides: whoever is first, the group is there before anything is sent to it.
        setpgid(pid_, pid_);
        output_.Source().CloseWriting();
        error_.Source().CloseWriting();
        // The C library of Debian 12 declares it in a way that C++ cannot link.
        end_ = static_cast<int>(syscall(SYS_pidfd_open, pid_, 0));
        if (end_ < 0) {
            const int reason = errno;
            Reap(SIGKILL);
            errno = reason;
            ThrowErrno("Cannot wait for " + Printable(job_.program));
        }
    }
    ~Child() {
        if (pid_ > 0) Reap(ending_);
        if (end_ >= 0) close(end_);
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    pid_t Group() const { return pid_; }
    /// Asks the group to end.
    void End(int signal) const {
        kill(-pid_, signal);
        kill(-pid_, SIGCONT);
    }
    /// For poll: its end, then its outputs.
    std::array<pollfd, 3> Polled() {
        return {
            pollfd{end_, POLLIN, 0}, {output_.Source().Reading(), POLLIN, 0}, {error_.Source().Reading(), POLLIN, 0}};
    }
    void Read(std::span<const pollfd> ready) {
        if (ready[1].revents != 0) output_.Read();
        if (ready[2].revents != 0) error_.Read();
    }
    /// Its head has ended: so does the group, and what it had to say is heard.
    void Finish() {
        const ChildEnd end = Reap(SIGKILL);
        for (LineReader* reader : {&output_, &error_}) {
            // No more than pipes hold: one who left the group may write on for ever.
            for (int blocks = 0; blocks < 64 && reader->Source().Reading() >= 0 && reader->Read(); ++blocks) {
            }
            reader->Finish();
        }
        if (job_.onEnd) job_.onEnd(end);
    }

private:
    /// The child's half after fork: only calls that are safe there, and its job; a program with one thread may do more.
    [[noreturn]] void Exec(char* const* arguments, const SignalGuard& signals, pid_t parent) {
        setpgid(0, 0);
        prctl(PR_SET_PDEATHSIG, ending_);
        if (getppid() != parent) _exit(127);
        const int input = open("/dev/null", O_RDONLY);
        if (input < 0 || dup2(input, STDIN_FILENO) < 0 || dup2(output_.Source().Writing(), STDOUT_FILENO) < 0 ||
            dup2(error_.Source().Writing(), STDERR_FILENO) < 0) {
            _exit(127);
        }
        signals.RestoreInChild();
        if (job_.run) _exit(job_.run());
        execv(arguments[0], arguments);
        _exit(127);
    }

    /// Ends the whole group. Until its head is reaped, the group's number is nobody else's.
    ChildEnd Reap(int signal) {
        if (signal != SIGKILL) {
            constexpr int kPatience = 5000;  // milliseconds
            End(signal);
            pollfd head{end_, POLLIN, 0};
            while (poll(&head, 1, kPatience) < 0 && errno == EINTR) {
            }
        }
        kill(-pid_, SIGKILL);
        int status = 0;
        while (waitpid(pid_, &status, 0) < 0 && errno == EINTR) {
        }
        pid_ = 0;
        if (WIFEXITED(status)) return {true, WEXITSTATUS(status)};
        return {false, WTERMSIG(status)};
    }

    ChildJob job_;
    LineReader output_;
    LineReader error_;
    int ending_;
    pid_t pid_ = 0;
    int end_ = -1;
};

Children::Children(SignalGuard& signals, int ending) : signals_(signals), ending_(ending) {}
Children::~Children() {
    for (const auto& child : children_) child->End(ending_);  // all at once, not one after the other
}

void Children::Start(ChildJob job) { children_.push_back(std::make_unique<Child>(std::move(job), signals_, ending_)); }

void Children::Wait() {
    constexpr std::size_t kEach = 3;
    std::vector<pollfd> polled;
    std::vector<pid_t> groups;
    for (const auto& child : children_) {
        for (const pollfd& entry : child->Polled()) polled.push_back(entry);
        groups.push_back(child->Group());
    }
    const int ready = ppoll(polled.data(), polled.size(), nullptr, &signals_.WaitMask());
    if (ready < 0 && errno != EINTR) ThrowErrno("Cannot wait for ffmpeg");
    signals_.Heed(groups, ending_ == SIGKILL ? SIGSTOP : SIGTSTP);
    if (ready <= 0) return;
    for (std::size_t i = children_.size(); i-- > 0;) {
        const std::span<const pollfd> own = std::span(polled).subspan(kEach * i, kEach);
        children_[i]->Read(own);
        if (own[0].revents == 0) continue;
        const std::unique_ptr<Child> ended = std::move(children_[i]);
        children_.erase(children_.begin() + static_cast<std::ptrdiff_t>(i));
        ended->Finish();
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

ChildEnd RunChild(ChildJob job, SignalGuard& signals) {
    ChildEnd end;
    job.onEnd = [&end](ChildEnd ended) { end = ended; };
    Children children(signals);
    children.Start(std::move(job));
    while (children.Running() > 0) children.Wait();
    return end;
}

}  // namespace App
