#include "convert/TemporaryFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "cli/Failure.h"

namespace App {
namespace {

[[noreturn]] void ThrowErrno(const std::string& what) {
    throw Failure(ExitStatus::ConversionFailed, what + ": " + std::strerror(errno) + ".");
}

int OpenNameless() {
    const char* base = std::getenv("TMPDIR");
    std::string name = std::string(base != nullptr && *base != '\0' ? base : "/tmp") + "/datahelpers-XXXXXX";
    const int file = mkostemp(name.data(), O_CLOEXEC);
    if (file < 0) ThrowErrno("Cannot make a file in " + name.substr(0, name.rfind('/')));
    unlink(name.c_str());
    return file;
}

/// failed: what is said where a file cannot be read or written to its end.
void Copy(int from, int to, const std::string& failed) {
    constexpr std::size_t kAtOnce = 1 << 20;
    std::vector<char> buffer(kAtOnce);
    while (true) {
        const ssize_t count = read(from, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) ThrowErrno(failed);
        if (count == 0) return;
        for (ssize_t done = 0; done < count;) {
            const ssize_t written = write(to, buffer.data() + done, static_cast<std::size_t>(count - done));
            if (written < 0 && errno == EINTR) continue;
            if (written < 0) ThrowErrno(failed);
            done += written;
        }
    }
}

}  // namespace

TemporaryFile::TemporaryFile() : file_(OpenNameless()) {}

TemporaryFile TemporaryFile::OfStandardInput() {
    if (isatty(STDIN_FILENO) != 0) {
        throw Failure(ExitStatus::WrongUsage, "Standard input is a terminal; a media file is expected there.");
    }
    TemporaryFile file;
    Copy(STDIN_FILENO, file.file_.Get(), "Standard input could not be kept until it is converted");
    return file;
}

std::string TemporaryFile::Path() const {
    return "/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(file_.Get());
}

void TemporaryFile::SendToStandardOutput() const {
    const std::string failed = "Standard output took not all of it";
    if (lseek(file_.Get(), 0, SEEK_SET) < 0) ThrowErrno(failed);
    Copy(file_.Get(), STDOUT_FILENO, failed);
}

void CheckStandardOutput() {
    if (isatty(STDOUT_FILENO) == 0) return;
    throw Failure(ExitStatus::WrongUsage,
                  Complaint{.message = "Standard output is a terminal, and no place for a file.",
                            .wayOut = "a pipe, a redirection or a file's name"});
}

}  // namespace App
