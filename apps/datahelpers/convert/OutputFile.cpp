#include "convert/OutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <random>
#include <system_error>

#include "Kestro/Planner/Text.h"

#include "cli/Failure.h"
#include "convert/Descriptor.h"

namespace App {
namespace {

using Kestro::Planner::Printable;

[[noreturn]] void ThrowUnwritable(const std::string& path, const std::string& reason, ExitStatus status) {
    throw Failure(status, "Cannot write " + Printable(path) + ": " + reason + ".");
}

std::string DirectoryOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

/// Where the file itself is, if it is there already and reached through links.
std::string RealPath(const std::string& path) {
    std::error_code none;
    const std::filesystem::path real = std::filesystem::canonical(path, none);
    return none ? path : real.string();
}

bool Sync(const std::string& path, int flags) {
    const Descriptor file(open(path.c_str(), flags | O_CLOEXEC));
    return file.Get() >= 0 && fsync(file.Get()) == 0;
}

std::string RandomName() {
    static constexpr char kDigits[] = "abcdefghijklmnopqrstuvwxyz0123456789";
    std::random_device random;
    std::uniform_int_distribution<std::size_t> digit(0, sizeof kDigits - 2);
    std::string name = ".datahelpers-";
    for (int i = 0; i < 12; ++i) name += kDigits[digit(random)];
    return name + ".part";
}

/// Gives the file the owner and the rights of the one that it replaces, but not its setuid and setgid bits: those were
/// granted to other content.
void TakeAccess(int file, const struct stat& existing) {
    mode_t mode = existing.st_mode & 0777;
    // The group's rights are for that group alone.
    if (fchown(file, existing.st_uid, existing.st_gid) != 0 &&
        fchown(file, static_cast<uid_t>(-1), existing.st_gid) != 0) {
        mode &= ~mode_t{070};
    }
    fchmod(file, mode);
}

}  // namespace

void OutputFile::Check(const std::string& path, bool overwrite, const std::string& input,
                       const std::vector<std::string>& others) {
    const auto refuse = [&path](const std::string& reason) { ThrowUnwritable(path, reason, ExitStatus::WrongUsage); };
    if (path.empty()) refuse("it has no name");
    struct stat status {};
    if (stat(path.c_str(), &status) == 0) {
        if (S_ISDIR(status.st_mode)) refuse("it is a directory");
        if (!S_ISREG(status.st_mode)) refuse("it is no regular file");
        const auto isThis = [&status](const std::string& file) {
            struct stat other {};
            return stat(file.c_str(), &other) == 0 && other.st_dev == status.st_dev && other.st_ino == status.st_ino;
        };
        if (isThis(input)) refuse("it is the input itself");
        if (std::ranges::any_of(others, isThis)) refuse("it is the preset or plan itself");
        if (!overwrite) {
            throw Failure(ExitStatus::WrongUsage,
                          Complaint{.message = "Cannot write " + Printable(path) + ": it is there already.",
                                    .wayOut = "--overwrite"});
        }
    } else if (lstat(path.c_str(), &status) == 0) {
        refuse("it is a link that leads nowhere");
    } else if (path.ends_with('/')) {
        refuse("it has no name");
    }
    // The new file is made beside an old one.
    const std::string directory = DirectoryOf(RealPath(path));
    if (stat(directory.c_str(), &status) != 0) {
        refuse("the directory " + Printable(directory) + " cannot be used: " + std::strerror(errno));
    }
    if (!S_ISDIR(status.st_mode)) refuse(Printable(directory) + " is no directory");
    if (access(directory.c_str(), W_OK | X_OK) != 0) {
        refuse("no file can be made in " + Printable(directory) + ": " + std::strerror(errno));
    }
}

OutputFile::OutputFile(const std::string& path, bool overwrite) : path_(RealPath(path)), overwrite_(overwrite) {
    // As any new file, unless it takes the place of one.
    struct stat existing {};
    const bool replaces = stat(path_.c_str(), &existing) == 0;
    for (int attempt = 0;; ++attempt) {
        constexpr int kMaxAttempts = 100;
        temporary_ = DirectoryOf(path_) + "/" + RandomName();
        const Descriptor file(open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
        if (file.Get() < 0) {
            if (errno == EEXIST && attempt < kMaxAttempts) continue;
            ThrowUnwritable(path, std::strerror(errno), ExitStatus::ConversionFailed);
        }
        if (replaces) TakeAccess(file.Get(), existing);
        return;
    }
}

OutputFile::~OutputFile() {
    // Nothing can be done where that fails.
    std::error_code none;
    if (!temporary_.empty()) std::filesystem::remove_all(temporary_, none);
}

void OutputFile::Commit() {
    const auto fail = [this] { ThrowUnwritable(path_, std::strerror(errno), ExitStatus::ConversionFailed); };
    if (!Sync(temporary_, O_RDWR)) fail();
    // Some file systems know no RENAME_NOREPLACE.
    const unsigned flags = overwrite_ ? 0 : RENAME_NOREPLACE;
    int renamed = renameat2(AT_FDCWD, temporary_.c_str(), AT_FDCWD, path_.c_str(), flags);
    if (renamed != 0 && errno == EINVAL) renamed = std::rename(temporary_.c_str(), path_.c_str());
    if (renamed != 0) fail();
    temporary_.clear();
    // The file is complete and in its place; a directory that cannot be synced does not undo that.
    Sync(DirectoryOf(path_), O_RDONLY | O_DIRECTORY);
}

OutputFolder::OutputFolder(const std::string& path) : path_(path) {
    while (path_.size() > 1 && path_.ends_with('/')) path_.pop_back();
    struct stat status {};
    if (lstat(path_.c_str(), &status) == 0) ThrowUnwritable(path, "it is there already", ExitStatus::WrongUsage);
    const std::string temporary = DirectoryOf(path_) + "/" + RandomName();
    if (mkdir(temporary.c_str(), 0777) != 0) ThrowUnwritable(path, std::strerror(errno), ExitStatus::WrongUsage);
    temporary_ = temporary;
}

OutputFolder::~OutputFolder() {
    std::error_code none;
    if (!temporary_.empty()) std::filesystem::remove_all(temporary_, none);
}

void OutputFolder::Commit() {
    if (std::rename(temporary_.c_str(), path_.c_str()) != 0) {
        ThrowUnwritable(path_, std::strerror(errno), ExitStatus::ConversionFailed);
    }
    temporary_.clear();
    Sync(DirectoryOf(path_), O_RDONLY | O_DIRECTORY);
}

TemporaryDirectory::TemporaryDirectory() {
    const char* base = std::getenv("TMPDIR");
    path_ = std::string(base != nullptr && *base != '\0' ? base : "/tmp") + "/datahelpers-XXXXXX";
    if (mkdtemp(path_.data()) == nullptr) {
        ThrowUnwritable(path_, std::strerror(errno), ExitStatus::ConversionFailed);
    }
    // A child may have another working directory.
    std::error_code none;
    const auto absolute = std::filesystem::absolute(path_, none);
    if (!none) path_ = absolute.string();
}

TemporaryDirectory::~TemporaryDirectory() {
    std::error_code none;
    std::filesystem::remove_all(path_, none);
}

}  // namespace App
