#include "catalogue/SiteFolder.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <system_error>

#include "Kestro/Planner/Text.h"

#include "catalogue/Page.h"
#include "cli/Failure.h"
#include "convert/OutputFile.h"
#include "convert/SignalGuard.h"

namespace App::Catalogue {
namespace {

namespace fs = std::filesystem;
using Kestro::Planner::Printable;

[[noreturn]] void ThrowUnwritable(const fs::path& path, const std::string& reason, ExitStatus status,
                                  const std::string& wayOut = {}) {
    throw Failure(status, Complaint{.message = "Cannot write " + Printable(path.string()) + ": " + reason + ".",
                                    .wayOut = wayOut});
}

bool IsCatalogue(const fs::path& folder) {
    std::ifstream index(folder / "index.html", std::ios::binary);
    std::string beginning(4096, '\0');
    index.read(beginning.data(), static_cast<std::streamsize>(beginning.size()));
    return IsDocument(beginning);
}

void WriteFiles(const fs::path& folder, const std::vector<SiteFile>& files, SignalGuard& signals) {
    for (const SiteFile& file : files) {
        signals.Heed();
        const fs::path path = folder / file.path;
        std::error_code error;
        fs::create_directories(path.parent_path(), error);
        if (error) ThrowUnwritable(path.parent_path(), error.message(), ExitStatus::ConversionFailed);
        errno = 0;
        std::ofstream out(path, std::ios::binary);
        out << file.content;
        out.close();
        if (!out) ThrowUnwritable(path, std::strerror(errno != 0 ? errno : EIO), ExitStatus::ConversionFailed);
    }
}

/// Puts new entries into a folder in the place of those of the same names; until Keep, takes it all back when it goes.
class Exchange {
public:
    Exchange(fs::path folder, fs::path taken) : folder_(std::move(folder)), taken_(std::move(taken)) {}
    ~Exchange() {
        std::error_code none;
        for (const std::string& name : names_) {
            fs::rename(folder_ / name, taken_ / ("new-" + name), none);
            fs::rename(taken_ / name, folder_ / name, none);
        }
    }
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;

    void Put(const fs::path& from, const std::string& name) {
        std::error_code error;
        const bool isTaken = fs::symlink_status(folder_ / name, error).type() != fs::file_type::not_found;
        error.clear();
        if (isTaken) fs::rename(folder_ / name, taken_ / name, error);
        if (error) ThrowUnwritable(folder_ / name, error.message(), ExitStatus::ConversionFailed);
        names_.push_back(name);
        fs::rename(from / name, folder_ / name, error);
        if (error) ThrowUnwritable(folder_ / name, error.message(), ExitStatus::ConversionFailed);
    }
    void Keep() { names_.clear(); }

private:
    fs::path folder_;
    fs::path taken_;  ///< what was there before
    std::vector<std::string> names_;
};

/// A folder in the folder, so that moving from one to the other is a matter of names.
class Workshop {
public:
    explicit Workshop(const std::string& folder) : path_(folder + "/.datahelpers-XXXXXX") {
        if (mkdtemp(path_.data()) == nullptr) {
            ThrowUnwritable(folder, std::strerror(errno), ExitStatus::ConversionFailed);
        }
        fs::create_directory(New());
        fs::create_directory(Old());
    }
    ~Workshop() {
        std::error_code none;
        fs::remove_all(path_, none);
    }
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;

    fs::path New() const { return fs::path(path_) / "new"; }
    fs::path Old() const { return fs::path(path_) / "old"; }

private:
    std::string path_;
};

}  // namespace

void CheckSiteFolder(const std::string& path, bool overwrite) {
    std::error_code error;
    if (path.empty()) ThrowUnwritable(path, "it has no name", ExitStatus::WrongUsage);
    if (!fs::exists(fs::symlink_status(path, error))) return;
    if (!fs::is_directory(path, error)) ThrowUnwritable(path, "it is no folder", ExitStatus::WrongUsage);
    const bool isEmpty = fs::is_empty(path, error);
    if (error) ThrowUnwritable(path, error.message(), ExitStatus::WrongUsage);
    if (isEmpty || overwrite || IsCatalogue(path)) return;
    ThrowUnwritable(path, "there are other things in it than a catalogue", ExitStatus::WrongUsage,
                    "--overwrite, which replaces what bears the name of one of its files and folders");
}

void WriteSite(const std::string& path, const std::vector<SiteFile>& files) {
    SignalGuard signals;
    std::error_code none;
    if (!fs::exists(path, none)) {
        OutputFolder folder(path);
        WriteFiles(folder.TemporaryPath(), files, signals);
        folder.Commit();
        return;
    }
    const Workshop workshop(path);
    WriteFiles(workshop.New(), files, signals);
    signals.Heed();
    std::set<std::string> names;
    for (const SiteFile& file : files) names.insert(fs::path(file.path).begin()->string());
    Exchange exchange(path, workshop.Old());
    for (const std::string& name : names) exchange.Put(workshop.New(), name);
    exchange.Keep();
}

}  // namespace App::Catalogue
