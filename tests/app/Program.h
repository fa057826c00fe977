#pragma once

#include <sys/types.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

/// Running the built program, and the files that it is run with.
namespace ProgramTest {

using Json = nlohmann::ordered_json;
using Arguments = std::vector<std::string>;

/// What a program left behind.
struct Result {
    int status = -1;  ///< exit status; minus the signal's number when one ended it
    std::string out;
    std::string err;

    /// Standard output as JSON.
    Json AsJson() const { return Json::parse(out); }
};

/// How a program is run, beyond its arguments.
struct Surroundings {
    std::filesystem::path folder;                                ///< the current one
    std::vector<std::pair<std::string, std::string>> variables;  ///< of the environment
    long fileSizeLimit = -1;                                     ///< bytes; none by default
};

/// A program that is running.
class Process {
public:
    Process(const std::string& program, const Arguments& arguments, const Surroundings& surroundings = {});
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    pid_t Pid() const { return pid_; }
    Result Wait();

private:
    pid_t pid_ = 0;
    int out_ = -1;
    int err_ = -1;
};

/// datahelpers with those arguments.
Result Call(const Arguments& arguments, const Surroundings& surroundings = {});

/// The file of one of the presets that come with the program.
std::string PresetFile(const std::string& name);

/// A folder of the test's own, gone at its end.
class Folder {
public:
    Folder();
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    std::string operator/(const std::string& name) const { return path_ / name; }
    std::string Write(const std::string& name, const std::string& content) const;
    std::string Read(const std::string& name) const;
    /// Names of all that is in it, sorted.
    std::vector<std::string> Names() const;

    /// A second of moving picture, 322 x 180 at 24000/1001, with six channels of sound at 96000 Hz.
    std::string MakeClip(const std::string& name) const;
    /// A program named ffmpeg, to stand first on the PATH; $output is the file that the real one would write.
    Surroundings WithFfmpeg(const std::string& script) const;

private:
    std::filesystem::path path_;
};

/// What ffprobe says of the first stream of that type ("v", "a").
Json ProbeStream(const std::string& file, const std::string& type);

}  // namespace ProgramTest
