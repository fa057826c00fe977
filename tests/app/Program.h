#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

/// Running the built program by the shell, and the files that it is run with.
namespace ProgramTest {

using Json = nlohmann::ordered_json;
using ::testing::HasSubstr;

/// Rows of texts.
template <std::size_t kColumns>
using Table = std::vector<std::array<std::string, kColumns>>;

/// What a line of the shell left behind.
struct Result {
    int status = 0;
    std::string out;
    std::string err;

    /// Standard output as JSON.
    Json AsJson() const { return Json::parse(out, nullptr, false); }
};

// Options that end in the path of a setting ($size/Width=200), and a clip of 322 x 180 at 24000/1001 with six channels
// of sound at 96000 Hz. `fake SCRIPT` puts an ffmpeg of one's own before the real one; $output is what that would
// write.
inline const char* const kPrelude = R"(
export COLUMNS=999 PATH=${program%/*}:$PATH
clip=../clip.mkv a='--set Streams/TypeId=audio' v='--set Streams/TypeId=video'
ac=$a/AudioCodec vc=$v/VideoCodec sound=$a/AudioResample/Resampler size=$v/VideoResize/Resizer fps=$v/VideoFrameRate/Fps
ff() { ffmpeg -nostdin -v error -y "$@"; }
fake() {
    mkdir -p ../fake && printf '#!/bin/sh\nfor output; do :; done; output=${output#file:}\n%s\n' "$1" >../fake/ffmpeg
    chmod +x ../fake/ffmpeg && PATH=$PWD/../fake:$PATH
}
[ -e $clip ] || ff -f lavfi -i testsrc2=s=322x180:r=24000/1001:d=0.3 -f lavfi -i sine=r=96000:d=0.3 \
    -af aformat=channel_layouts=5.1 -c:v ffv1 -c:a pcm_s16le $clip
)";

/// Runs lines of the shell in a folder of the test's own, with the program, ffmpeg and ffprobe on the PATH.
class Shell : public ::testing::Test {
protected:
    Shell() { std::filesystem::create_directory(Folder()); }
    ~Shell() override { std::filesystem::remove_all(Folder()); }

    static Result Run(const std::string& line) {
        const std::string in =
            "cd '" + Folder() + "' && exec >../out 2>../err; program='" KESTRO_PROGRAM "'; presets='";
        const std::string command = in + KESTRO_PRESETS "'\n" + kPrelude + line + "\n";
        const int status = std::system(command.c_str());  // NOLINT(cert-env33-c): it is a shell's line that is meant
        Result result{WIFEXITED(status) ? WEXITSTATUS(status) : -1, Read("../out"), Read("../err")};
        const auto isControl = [](unsigned char c) { return (c < ' ' && c != '\n') || c == 0x7f; };
        EXPECT_TRUE(std::ranges::none_of(result.out + result.err, isControl)) << "raw control characters: " << line;
        for (const char* steering : {"\u009b", "\u202e", "\xff"}) {
            EXPECT_EQ((result.out + result.err).find(steering), std::string::npos) << line;
        }
        return result;
    }
    /// What a line that changes nothing left behind, be it now or before.
    const Result& RunOnce(const std::string& line) {
        const auto [entry, isNew] = results_.try_emplace(line);
        if (isNew) entry->second = Run(line);
        return entry->second;
    }
    /// The report of a command that succeeds.
    static Json Report(const std::string& command) {
        const Result result = Run("datahelpers " + command + " --json");
        EXPECT_EQ(result.status, 0) << command << "\n" << result.err;
        return result.AsJson();
    }
    static std::string Read(const std::string& name) {
        std::ostringstream text;
        text << std::ifstream(Folder() + "/" + name, std::ios::binary).rdbuf();
        return text.str();
    }
    static void Write(const std::string& name, const std::string& content) {
        std::ofstream(Folder() + "/" + name, std::ios::binary) << content;
    }

private:
    std::map<std::string, Result> results_;

    struct Root {
        std::string path = std::filesystem::temp_directory_path() / "datahelpers-test-XXXXXX";
        Root() { EXPECT_NE(mkdtemp(path.data()), nullptr); }
        ~Root() { std::filesystem::remove_all(path); }
    };
    static std::string Folder() {
        static const Root root;
        return root.path + "/here";
    }
};

}  // namespace ProgramTest
