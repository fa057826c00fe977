#include "tests/app/Program.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace ProgramTest {
namespace {

std::array<int, 2> MakePipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("pipe");
    return ends;
}

Result RunProgram(const std::string& program, const Arguments& arguments, const Surroundings& surroundings = {}) {
    return Process(program, arguments, surroundings).Wait();
}

void MustSucceed(const Result& result) {
    if (result.status != 0) throw std::runtime_error("status " + std::to_string(result.status) + ": " + result.err);
}

}  // namespace

Process::Process(const std::string& program, const Arguments& arguments, const Surroundings& surroundings) {
    std::vector<const char*> argv{program.c_str()};
    for (const std::string& argument : arguments) argv.push_back(argument.c_str());
    argv.push_back(nullptr);
    const auto out = MakePipe();
    const auto err = MakePipe();
    pid_ = fork();
    if (pid_ < 0) throw std::runtime_error("fork");
    if (pid_ == 0) {
        dup2(out[1], STDOUT_FILENO);
        dup2(err[1], STDERR_FILENO);
        if (!surroundings.folder.empty() && chdir(surroundings.folder.c_str()) != 0) _exit(126);
        for (const auto& [name, value] : surroundings.variables) setenv(name.c_str(), value.c_str(), 1);
        if (surroundings.fileSizeLimit >= 0) {
            const auto bytes = static_cast<rlim_t>(surroundings.fileSizeLimit);
            const rlimit limit{bytes, bytes};
            setrlimit(RLIMIT_FSIZE, &limit);
            signal(SIGXFSZ, SIG_IGN);  // Writing fails then, as on a full disk.
        }
        execvp(program.c_str(), const_cast<char* const*>(argv.data()));
        _exit(127);
    }
    close(out[1]);
    close(err[1]);
    out_ = out[0];
    err_ = err[0];
}

Process::~Process() {
    if (pid_ > 0) {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    if (out_ >= 0) close(out_);
    if (err_ >= 0) close(err_);
}

Result Process::Wait() {
    Result result;
    std::array<pollfd, 2> ends{{{out_, POLLIN, 0}, {err_, POLLIN, 0}}};
    const std::array<std::string*, 2> texts{&result.out, &result.err};
    while (ends[0].fd >= 0 || ends[1].fd >= 0) {
        if (poll(ends.data(), ends.size(), -1) < 0 && errno != EINTR) throw std::runtime_error("poll");
        for (std::size_t i = 0; i < ends.size(); ++i) {
            if (ends[i].revents == 0) continue;
            std::array<char, 4096> buffer{};
            const ssize_t count = read(ends[i].fd, buffer.data(), buffer.size());
            if (count > 0) {
                texts[i]->append(buffer.data(), static_cast<std::size_t>(count));
            } else {
                ends[i].fd = -1;
            }
        }
    }
    int status = 0;
    waitpid(pid_, &status, 0);
    pid_ = 0;
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return result;
}

Result Call(const Arguments& arguments, const Surroundings& surroundings) {
    return RunProgram(KESTRO_PROGRAM, arguments, surroundings);
}

std::string PresetFile(const std::string& name) { return std::string(KESTRO_PRESETS) + "/" + name + ".json"; }

Folder::Folder() {
    std::string pattern = std::filesystem::temp_directory_path() / "datahelpers-test-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("mkdtemp");
    path_ = pattern;
}

Folder::~Folder() {
    std::error_code none;
    std::filesystem::remove_all(path_, none);
}

std::string Folder::Write(const std::string& name, const std::string& content) const {
    std::ofstream(path_ / name, std::ios::binary) << content;
    return path_ / name;
}

std::string Folder::Read(const std::string& name) const {
    std::ostringstream text;
    text << std::ifstream(path_ / name, std::ios::binary).rdbuf();
    return text.str();
}

std::vector<std::string> Folder::Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_)) names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
}

std::string Folder::MakeClip(const std::string& name) const {
    MustSucceed(RunProgram(
        "ffmpeg", {"-v", "error", "-f", "lavfi", "-i", "testsrc2=size=322x180:rate=24000/1001:duration=1", "-f",
                   "lavfi", "-i", "sine=sample_rate=96000:duration=1", "-af", "aformat=channel_layouts=5.1", "-c:v",
                   "ffv1", "-c:a", "pcm_s16le", "-f", "matroska", "file:" + (path_ / name).string()}));
    return path_ / name;
}

Surroundings Folder::WithFfmpeg(const std::string& script) const {
    const std::filesystem::path bin = path_ / "bin";
    std::filesystem::create_directory(bin);
    Write("bin/ffmpeg", "#!/bin/sh\nfor output; do :; done\noutput=${output#file:}\n" + script);
    std::filesystem::permissions(bin / "ffmpeg", std::filesystem::perms::owner_all);
    const char* path = std::getenv("PATH");
    return {.folder = path_, .variables = {{"PATH", bin.string() + ":" + (path != nullptr ? path : "/usr/bin:/bin")}}};
}

Json ProbeStream(const std::string& file, const std::string& type) {
    const Result result =
        RunProgram("ffprobe", {"-v", "error", "-of", "json", "-show_streams", "-select_streams", type, "file:" + file});
    MustSucceed(result);
    return result.AsJson()["streams"].at(0);
}

}  // namespace ProgramTest
