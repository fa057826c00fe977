#pragma once

#include <string>
#include <vector>

namespace App {

/// A file that appears under its name all at once, when it is complete: until then it is a temporary one beside it,
/// and goes when this object goes. What was there before stays as it is until then.
class OutputFile {
public:
    /// Whether that name can be written at all. Throws Failure (WrongUsage): it is a directory, its directory is not
    /// there, it is the input itself or another file that is read, or no regular file. Empty names are none.
    /// overwrite: a file that is there already may be replaced.
    static void Check(const std::string& path, bool overwrite, const std::string& input,
                      const std::vector<std::string>& others = {});

    /// Makes the temporary file, empty. Throws Failure (ConversionFailed).
    OutputFile(const std::string& path, bool overwrite);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    const std::string& TemporaryPath() const noexcept { return temporary_; }
    /// Puts the temporary file, once it is on the disk, in the place of the output. Throws Failure (ConversionFailed),
    /// also when somebody else has made a file of that name meanwhile that is not to be replaced.
    void Commit();

private:
    std::string path_;  ///< of the file itself, not of a link to it
    bool overwrite_;
    std::string temporary_;
};

/// A folder that appears under its name, with all that is in it, when it is complete.
class OutputFolder {
public:
    /// Throws Failure (WrongUsage) for a name that is taken, or cannot be written.
    explicit OutputFolder(const std::string& path);
    ~OutputFolder();
    OutputFolder(const OutputFolder&) = delete;
    OutputFolder& operator=(const OutputFolder&) = delete;

    const std::string& TemporaryPath() const noexcept { return temporary_; }
    /// Throws Failure (ConversionFailed).
    void Commit();

private:
    std::string path_;
    std::string temporary_;
};

/// A directory for one run, for its owner alone; goes with all that is in it.
class TemporaryDirectory {
public:
    /// Throws Failure (ConversionFailed).
    TemporaryDirectory();
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    const std::string& Path() const noexcept { return path_; }

private:
    std::string path_;
};

}  // namespace App
