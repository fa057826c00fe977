#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "tests/app/Program.h"

namespace ProgramTest {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class Conversions : public ::testing::Test {
protected:
    /// convert INPUT OUTPUT in the folder, with the quickest settings.
    Result Convert(const std::string& input, const std::string& output, const Arguments& more = {}) {
        return Convert(input, output, more, {.folder = folder_.Path()});
    }
    static Result Convert(const std::string& input, const std::string& output, const Arguments& more,
                          const Surroundings& surroundings) {
        return Call(AsArguments(input, output, more), surroundings);
    }
    static Arguments AsArguments(const std::string& input, const std::string& output, const Arguments& more) {
        Arguments arguments{"convert", "--format", "mp4", "--set",
                            "Streams/TypeId=video/VideoCodec/EncodeOptions/Preset=ultrafast"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        arguments.insert(arguments.end(), {"--", input, output});
        return arguments;
    }

    Folder folder_;
    std::string clip_ = folder_.MakeClip("clip.mkv");
};

TEST_F(Conversions, MakeWhatThePlanSays) {
    for (const auto& [preset, output] :
         {std::pair("mp4-h264-aac", "out.mp4"), std::pair("matroska-h264-mp3", "out.mkv")}) {
        SCOPED_TRACE(preset);
        const Result result = Call({"convert", clip_, folder_ / output, "--preset", PresetFile(preset), "--json"});
        ASSERT_EQ(result.status, 0) << result.err;
        const Json report = result.AsJson();
        EXPECT_EQ(report["output"]["differences"], Json::array());
        EXPECT_EQ(report["output"]["messages"], Json::array());
        EXPECT_EQ(report["output"]["size"], std::filesystem::file_size(folder_ / output));

        const Json& planned = report["settings"]["Streams"];
        const Json video = ProbeStream(folder_ / output, "v");
        EXPECT_EQ(video["codec_name"], planned[0]["VideoCodec"]["CodecId"]);
        EXPECT_EQ(video["width"], planned[0]["VideoCodec"]["Width"]);
        EXPECT_EQ(video["height"], planned[0]["VideoCodec"]["Height"]);
        EXPECT_EQ(video["r_frame_rate"], planned[0]["VideoCodec"]["Fps"]);
        EXPECT_EQ(video["pix_fmt"], "yuv420p");
        EXPECT_EQ(video["profile"], "High");
        const Json audio = ProbeStream(folder_ / output, "a");
        EXPECT_EQ(audio["codec_name"], planned[1]["AudioCodec"]["CodecId"]);
        EXPECT_EQ(audio["sample_rate"], std::to_string(planned[1]["AudioCodec"]["SampleRate"].get<int>()));
        EXPECT_EQ(audio["channel_layout"], planned[1]["AudioCodec"]["Layout"]);
    }
}

TEST_F(Conversions, KeepTheCoverAttached) {
    const std::string song = folder_ / "song.mp3";
    ASSERT_EQ(
        Process("ffmpeg", {"-v", "error", "-f", "lavfi", "-i", "sine=d=1", "-f", "lavfi", "-i", "color=s=64x64:d=0.04",
                           "-map", "0", "-map", "1", "-c:v", "png", "-disposition:v", "attached_pic", song})
            .Wait()
            .status,
        0);
    for (const char* format : {"flac", "m4a", "mp3"}) {
        SCOPED_TRACE(format);
        const Result result = Call({"convert", song, folder_ / "out", "--format", format});
        ASSERT_EQ(result.status, 0) << result.err;
        const Json cover = ProbeStream(folder_ / "out", "v");
        EXPECT_EQ(cover["codec_name"], "mjpeg");
        EXPECT_EQ(cover["disposition"]["attached_pic"], 1);
    }
}

TEST_F(Conversions, MakeSequencesOfPictures) {
    const std::string frames = folder_ / "frames %d";  // a number in a name is no pattern
    const Result result = Call({"convert", clip_, frames, "--format", "targa", "--sequence", "--json"});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.AsJson()["output"]["files"], 24);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(frames), {}), 24);
    EXPECT_TRUE(std::filesystem::exists(frames + "/000024.tga"));
    EXPECT_EQ(Call({"convert", clip_, frames, "--format", "png", "--sequence"}).status, 2) << "it is there already";
    EXPECT_EQ(Call({"convert", clip_, folder_ / "other", "--format", "mp4", "--sequence"}).status, 3);
    EXPECT_THAT(folder_.Names(), ::testing::UnorderedElementsAre("clip.mkv", "frames %d"));
}

TEST_F(Conversions, AHigherQualityIsNoCoarser) {
    const std::pair<const char*, const char*> codecs[] = {
        {"h264", "mp4"}, {"hevc", "mp4"},          {"mpeg4", "mp4"},       {"vp8", "webm"},
        {"vp9", "webm"}, {"av1", "matroska"},      {"theora", "matroska"}, {"mjpeg", "matroska"},
        {"h263", "3gp"}, {"flv1", "flv"},          {"mpeg1video", "mpeg"}, {"mpeg2video", "vob"},
        {"wmv2", "wmv"}, {"jpeg2000", "jpeg2000"},
    };
    constexpr double kNoise = 0.98;
    for (const auto& [codec, format] : codecs) {
        double before = 0;
        for (const char* quality : {"1", "50", "100"}) {
            SCOPED_TRACE(std::string(codec) + ", quality " + quality);
            const std::string video = "Streams/TypeId=video/VideoCodec/";
            const Result result =
                Call({"convert", clip_, folder_ / "out", "--format", format, "--video", codec, "--json", "--set",
                      video + "RateControl=vbr", "--set", video + "Quality=" + quality});
            if (result.status == 3 && result.err.find("has no encoder for") != std::string::npos) break;
            ASSERT_EQ(result.status, 0) << result.err;
            const double size = result.AsJson()["output"]["size"];
            EXPECT_GT(size, before * kNoise);
            before = size;
        }
    }
}

TEST_F(Conversions, GiveProfilesTheirPixels) {
    for (const auto& [profile, pixels] : {std::pair("baseline", "yuv420p"), std::pair("high10", "yuv420p10le"),
                                          std::pair("high422", "yuv422p"), std::pair("high444", "yuv444p")}) {
        SCOPED_TRACE(profile);
        const Result result =
            Convert("clip.mkv", "out.mp4",
                    {"--set", std::string("Streams/TypeId=video/VideoCodec/EncodeOptions/Profile=") + profile});
        ASSERT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(ProbeStream(folder_ / "out.mp4", "v")["pix_fmt"], pixels);
    }
}

TEST_F(Conversions, TakeNamesAsTheyAre) {
    for (const auto& [input, output] : {std::pair("-clip.mkv", "-out.mp4"), std::pair("a:b.mkv", "c:d.mp4"),
                                        std::pair("%03d.mkv", "%d.mp4"), std::pair("a b'\".mkv", "$(c)\n.mp4")}) {
        SCOPED_TRACE(input);
        std::filesystem::copy_file(clip_, folder_.Path() / input);
        const Result result = Convert(input, output);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_TRUE(std::filesystem::exists(folder_.Path() / output));
    }
    EXPECT_EQ(folder_.Names().size(), 9U);
    // A still picture by a name that image sequences have.
    Process make("ffmpeg", {"-v", "error", "-i", clip_, "-frames:v", "1", "-update", "1", folder_ / "still%02d.png"});
    ASSERT_EQ(make.Wait().status, 0);
    EXPECT_EQ(Convert("still%02d.png", "still.mp4").status, 0);
}

TEST_F(Conversions, BeginOnlyWhenTheOutputCanBeWritten) {
    folder_.Write("file", "");
    std::filesystem::create_directory(folder_ / "directory");
    std::filesystem::create_hard_link(clip_, folder_ / "same.mkv");
    std::filesystem::create_symlink("nowhere", folder_ / "dangling");
    const auto before = folder_.Names();
    const struct {
        const char* output;
        const char* says;
    } cases[] = {
        {"directory", "it is a directory"},
        {"absent/out.mp4", "the directory absent"},
        {"file/out.mp4", "file"},
        {"same.mkv", "the input itself"},
        {"clip.mkv", "the input itself"},
        {"dangling", "leads nowhere"},
        {"/dev/null", "no regular file"},
        {"", "no name"},
        {"new/", "no name"},
    };
    for (const auto& [output, says] : cases) {
        SCOPED_TRACE(output);
        const Result result = Convert("clip.mkv", output);
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.err, HasSubstr(says));
    }
    EXPECT_EQ(folder_.Names(), before);
}

TEST_F(Conversions, ReplaceAFileOnlyWhenTheyAreComplete) {
    folder_.Write("out.mp4", "old");
    std::filesystem::permissions(folder_ / "out.mp4", std::filesystem::perms(0640));
    std::filesystem::create_symlink("out.mp4", folder_ / "link.mp4");
    const Result result = Convert("clip.mkv", "link.mp4");
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(std::filesystem::is_symlink(folder_ / "link.mp4"));
    EXPECT_EQ(std::filesystem::status(folder_ / "out.mp4").permissions(), std::filesystem::perms(0640));
    EXPECT_EQ(ProbeStream(folder_ / "out.mp4", "v")["codec_name"], "h264");
    EXPECT_THAT(folder_.Names(), ElementsAre("clip.mkv", "link.mp4", "out.mp4"));
}

TEST_F(Conversions, LeaveNothingOnAFullDisk) {
    ASSERT_EQ(Convert("clip.mkv", "whole.mp4").status, 0);
    const auto size = static_cast<long>(std::filesystem::file_size(folder_ / "whole.mp4"));
    folder_.Write("out.mp4", "old");
    // Full in the middle, and at the very end, where ffmpeg may end as if all were well.
    for (const long limit : {size / 2, size - 1}) {
        SCOPED_TRACE(limit);
        const Result result = Convert("clip.mkv", "out.mp4", {}, {.folder = folder_.Path(), .fileSizeLimit = limit});
        EXPECT_EQ(result.status, 1) << result.out;
        EXPECT_THAT(result.err, HasSubstr("File too large"));
        EXPECT_EQ(folder_.Read("out.mp4"), "old");
        EXPECT_THAT(folder_.Names(), ElementsAre("clip.mkv", "out.mp4", "whole.mp4"));
    }
}

TEST_F(Conversions, FailWhenFfmpegDoes) {
    const struct {
        const char* script;
        const char* says;
    } cases[] = {
        {"echo half > \"$output\"; echo 'no such thing' >&2; exit 3", "no such thing"},
        {"echo half > \"$output\"", "cannot be read"},  // ends well, but wrote no media
        {"echo half > \"$output\"; kill -SEGV $$", "signal"},
    };
    folder_.Write("out.mp4", "old");
    for (const auto& [script, says] : cases) {
        SCOPED_TRACE(script);
        const Result result = Convert("clip.mkv", "out.mp4", {"--json"}, folder_.WithFfmpeg(script));
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, HasSubstr(says));
        EXPECT_EQ(result.AsJson()["status"], 1);
        EXPECT_EQ(folder_.Read("out.mp4"), "old");
        EXPECT_THAT(folder_.Names(), ElementsAre("bin", "clip.mkv", "out.mp4"));
    }
    const Result missing = Convert("clip.mkv", "new.mp4", {}, {.folder = folder_.Path(), .variables = {{"PATH", ""}}});
    EXPECT_EQ(missing.status, 1);
    EXPECT_THAT(missing.err, HasSubstr("ffmpeg is not on the PATH"));
}

TEST_F(Conversions, EndWithTheirChildWhenInterrupted) {
    using namespace std::chrono_literals;
    folder_.Write("out.mp4", "old");
    for (const int signal : {SIGINT, SIGTERM}) {
        SCOPED_TRACE(signal);
        std::filesystem::remove(folder_ / "pid");
        const Surroundings slow =
            folder_.WithFfmpeg("echo half > \"$output\"; echo $$ > new; mv new pid; exec sleep 60");
        Process program(KESTRO_PROGRAM, AsArguments("clip.mkv", "out.mp4", {}), slow);
        for (int i = 0; i < 1000 && !std::filesystem::exists(folder_ / "pid"); ++i) std::this_thread::sleep_for(10ms);
        const int child = std::stoi(folder_.Read("pid"));
        ASSERT_EQ(kill(child, 0), 0);
        kill(program.Pid(), signal);
        const Result result = program.Wait();
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, HasSubstr("Interrupted"));
        EXPECT_EQ(kill(child, 0), -1);
        EXPECT_EQ(folder_.Read("out.mp4"), "old");
        EXPECT_THAT(folder_.Names(), ElementsAre("bin", "clip.mkv", "out.mp4", "pid"));
    }
}

TEST_F(Conversions, InTwoPassesLeaveNoLogs) {
    std::filesystem::create_directory(folder_ / "tmp");
    const Result result =
        Convert("clip.mkv", "out.mp4", {"--set", "Streams/TypeId=video/VideoCodec/Multipass=two-pass"},
                {.folder = folder_.Path(), .variables = {{"TMPDIR", folder_ / "tmp"}}});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.err, HasSubstr("pass 2/2"));
    EXPECT_TRUE(std::filesystem::is_empty(folder_ / "tmp"));
    EXPECT_THAT(folder_.Names(), ElementsAre("clip.mkv", "out.mp4", "tmp"));
}

TEST_F(Conversions, ShowPlainProgressWithoutATerminal) {
    const Result result = Convert("clip.mkv", "out.mp4");
    EXPECT_THAT(result.err, HasSubstr("100 %  0:01 of 0:01"));
    EXPECT_EQ(result.err.find('\r'), std::string::npos);
    EXPECT_EQ(Convert("clip.mkv", "out.mp4", {"--json"}).err, "");
}

}  // namespace
}  // namespace ProgramTest
