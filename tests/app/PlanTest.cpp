#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/Program.h"

namespace ProgramTest {
namespace {

using ::testing::HasSubstr;

const std::string kVideo = "Streams/TypeId=video/";
const std::string kAudio = "Streams/TypeId=audio/";
const std::string kResampler = kAudio + "AudioResample/Resampler/";

class Plans : public ::testing::Test {
protected:
    Result Plan(Arguments arguments) {
        arguments.insert(arguments.begin(), {"plan", clip_, "--json"});
        return Call(arguments);
    }
    Json Planned(const Arguments& arguments) {
        const Result result = Plan(arguments);
        EXPECT_EQ(result.status, 0) << result.err;
        return result.AsJson();
    }

    Folder folder_;
    std::string clip_ = folder_.MakeClip("clip.mkv");
};

TEST_F(Plans, OfEveryPresetNeedNoCorrection) {
    int count = 0;
    for (const auto& file : std::filesystem::directory_iterator(KESTRO_PRESETS)) {
        SCOPED_TRACE(file.path().filename());
        const Json plan = Planned({"--preset", file.path()});
        EXPECT_EQ(plan["corrections"], Json::array());
        EXPECT_EQ(plan["notes"], Json::array());
        for (const Json& stream : plan["streams"]) EXPECT_TRUE(stream["supported"]);
        ++count;
    }
    EXPECT_GT(count, 0);
}

TEST_F(Plans, OfAPresetHoldWhatItAsksFor) {
    const Json plan = Planned({"--preset", PresetFile("mp4-h264-aac")});
    EXPECT_EQ(plan["settings"]["Format"]["Container"], "mp4");
    const Json& video = plan["settings"]["Streams"][0];
    EXPECT_EQ(video["VideoCodec"]["Width"], 1280);
    EXPECT_EQ(video["VideoCodec"]["Height"], 720);
    EXPECT_EQ(video["VideoCodec"]["Fps"], "30000/1001");
    EXPECT_EQ(video["VideoFrameRate"]["Fps"], "30000/1001");
    EXPECT_EQ(video["VideoResize"]["Resizer"]["Width"], 1280);
    const Json& audio = plan["settings"]["Streams"][1];
    EXPECT_EQ(audio["AudioCodec"]["SampleRate"], 48000);
    EXPECT_EQ(audio["AudioCodec"]["Layout"], "stereo");
    EXPECT_EQ(audio["AudioResample"]["Resampler"]["SampleRate"], 48000);
}

TEST_F(Plans, ReportOneCorrectionForOneWrongBitrate) {
    const Arguments arguments{"--preset", PresetFile("mp4-h264-aac"), "--set", kAudio + "AudioCodec/BitRate=100000"};
    const Json corrections = Planned(arguments)["corrections"];
    ASSERT_EQ(corrections.size(), 1U);
    EXPECT_EQ(corrections[0]["path"], kAudio + "AudioCodec/BitRate");
    EXPECT_EQ(corrections[0]["before"], 100000);
    EXPECT_EQ(corrections[0]["after"], 256000);
    EXPECT_THAT(corrections[0]["reason"].get<std::string>(), HasSubstr("must be one of 32000 64000"));

    Arguments forPeople{"plan", clip_};
    forPeople.insert(forPeople.end(), arguments.begin(), arguments.end());
    EXPECT_THAT(Call(forPeople).out, HasSubstr(kAudio + "AudioCodec/BitRate: 100000 -> 256000\n"));
}

TEST_F(Plans, MoveTheInputsValuesIntoWhatIsAccepted) {
    const Json plan = Planned({"--format", "mp4", "--audio", "mp3"});
    std::map<std::string, Json> moved;
    for (const Json& correction : plan["corrections"]) moved[correction["path"]] = correction["after"];
    EXPECT_EQ(moved[kResampler + "SampleRate"], 48000);
    EXPECT_EQ(moved[kResampler + "Layout"], "stereo");
    EXPECT_EQ(moved.size(), 2U);
    // Six channels at 96000 Hz are fine for AAC.
    EXPECT_EQ(Planned({"--format", "mp4"})["corrections"], Json::array());
}

TEST_F(Plans, KeepContainersAndEncodersToTheirRules) {
    const std::string codec = kVideo + "VideoCodec/";
    const std::string resizer = kVideo + "VideoResize/Resizer/";
    const std::map<std::string, Json> ntsc = {{kResampler + "SampleRate", 48000},
                                              {kResampler + "Layout", "stereo"},
                                              {resizer + "Width", 352},
                                              {resizer + "Height", 240},
                                              {kVideo + "VideoFrameRate/Fps", "30000/1001"}};
    std::map<std::string, Json> ofMpeg1 = ntsc;
    ofMpeg1[codec + "BitRate"] = 1856000;
    const struct {
        Arguments arguments;
        std::map<std::string, Json> corrected;
    } cases[] = {
        {{"--format", "mka", "--audio", "dts", "--set", kResampler + "SampleRate=48000"},
         {{kResampler + "Layout", "5.1(side)"}, {kAudio + "AudioCodec/BitRate", 669001}}},
        {{"--format", "mka", "--set", kResampler + "SampleFmt=fltp"}, {}},  // what is not asked for stays
        {{"--format", "dvd"}, ntsc},
        {{"--format", "dvd", "--video", "mpeg1video"}, ofMpeg1},
        {{"--format", "mxf", "--set", kResampler + "Layout=stereo", "--video", "h264", "--set",
          codec + "EncodeOptions/Profile=high"},
         {{kResampler + "SampleRate", 48000}, {codec + "EncodeOptions/Profile", "baseline"}}},
        {{"--format", "avi", "--audio", "aac"}, {{kResampler + "Layout", "stereo"}}},
        {{"--format", "3gp", "--set", kResampler + "Layout=mono"},
         {{resizer + "Width", 352}, {resizer + "Height", 288}}},
    };
    for (const auto& [arguments, corrected] : cases) {
        SCOPED_TRACE(::testing::PrintToString(arguments));
        const Json plan = Planned(arguments);
        std::map<std::string, Json> found;
        for (const Json& correction : plan["corrections"]) {
            found[correction["path"]] = correction["after"];
            EXPECT_NE(correction["reason"], "");
        }
        EXPECT_EQ(found, corrected);
    }
}

TEST_F(Plans, SayWhatTheMuxerDoesNotStore) {
    const Json streams = Planned({"--format", "ipod", "--audio", "mp3"})["streams"];
    EXPECT_TRUE(streams[0]["supported"] == true && streams[1]["supported"] == false) << streams;
}

TEST_F(Plans, TellWhatWasChosen) {
    const Json plan = Planned({"--format", "matroska", "--set", kVideo + "VideoCodec/RateControl=cbr_auto", "--set",
                               kVideo + "VideoResize/Resizer/Width=161"});
    std::map<std::string, std::string> chosen;
    for (const Json& choice : plan["choices"]) chosen[choice["path"]] = choice["value"];
    EXPECT_EQ(chosen[kVideo + "VideoCodec/CodecId"], "h264");
    EXPECT_EQ(chosen[kAudio + "AudioCodec/CodecId"], "aac");
    EXPECT_EQ(chosen[kVideo + "VideoCodec/RateControl"], "cbr");
    EXPECT_TRUE(chosen.contains(kVideo + "VideoCodec/BitRate"));
    EXPECT_EQ(chosen[kVideo + "VideoResize/Resizer/FrameSizeMode"], "custom");
    ASSERT_EQ(plan["corrections"].size(), 1U);
    EXPECT_EQ(plan["corrections"][0]["after"], 160);  // an even width
}

TEST_F(Plans, SettleWhatIsLeftToTheProgram) {
    const std::string rate = kResampler + "SampleRate";
    const std::string layout = kResampler + "Layout";
    const std::string fps = kVideo + "VideoFrameRate/Fps";
    const std::string mode = kAudio + "AudioCodec/RateControl";
    const std::string bitrate = kAudio + "AudioCodec/BitRate";
    const std::string codec = kAudio + "AudioCodec/CodecId";
    const struct {
        Arguments arguments;
        std::string setting;
        std::string value;
        std::string reason;
    } cases[] = {
        {{"--format", "mp4"}, rate, "96000", "auto: the input has 96000"},
        {{"--format", "mp4"}, layout, "5.1", "auto: the input has 5.1"},
        {{"--format", "mp4"}, codec, "aac", "auto: the default of mp4"},
        {{"--format", "mp4"}, mode, "cbr", "auto: constant, and the bitrate is left to the program"},
        {{"--format", "matroska", "--audio", "mp3"},
         rate,
         "48000",
         "auto: nearest to the input's 96000 that mp3 takes"},
        {{"--format", "mp4", "--audio", "mp3"}, layout, "stereo", "auto: nearest to the input's 5.1 that mp3 takes"},
        {{"--format", "flv", "--audio", "mp3"},
         rate,
         "44100",
         "auto: nearest to the input's 96000 that the container flv and mp3 take"},
        {{"--format", "mka", "--audio", "dts"},
         layout,
         "5.1(side)",
         "auto: nearest to the input's 5.1 that FFmpeg's encoder dca takes"},
        {{"--format", "matroska", "--audio", "alac"}, mode, "vbr", "auto: RateControl of alac must be vbr."},
        {{"--format", "gif"}, fps, "24000/1001", "auto: the input has 24000/1001"},
        {{"--format", "dvd"}, fps, "30000/1001", "auto: nearest to the input's 24000/1001 that dvd ntsc takes"},
        {{"--format", "mp4", "--set", kVideo + "VideoCodec/Fps=25"},
         fps,
         "25/1",
         "auto: what the stream's other settings ask for"},
    };
    for (const auto& [arguments, setting, value, reason] : cases) {
        Arguments automatic = arguments;
        automatic.insert(automatic.end(), {"--set", setting + "=auto"});
        SCOPED_TRACE(::testing::PrintToString(automatic));
        const Json plan = Planned(automatic);
        std::map<std::string, std::pair<std::string, std::string>> chosen;
        for (const Json& choice : plan["choices"]) chosen[choice["path"]] = {choice["value"], choice["reason"]};
        EXPECT_EQ(chosen[setting], std::pair(value, reason));
        for (const Json& correction : plan["corrections"]) EXPECT_NE(correction["path"], setting);
    }
    // One bitrate is told: the one that the output has.
    const Json dts = Planned({"--format", "mka", "--audio", "dts", "--set", mode + "=auto", "--set", rate + "=auto"});
    EXPECT_EQ(dts["corrections"].size(), 1U);  // the layout
    for (const Json& choice : dts["choices"]) {
        if (choice["path"] != bitrate) continue;
        EXPECT_EQ(choice["value"], dts["settings"]["Streams"][0]["AudioCodec"]["BitRate"].dump());
    }
}

TEST_F(Plans, RefuseWhatCannotBeUsed) {
    const std::string preset = PresetFile("mp4-h264-aac");
    const struct {
        Arguments arguments;
        std::string path;
        const char* wayOut;  // a part of it
    } cases[] = {
        {{"--format", "mp5"}, "", ""},
        {{"--format", "mp4", "--video", "xvid"}, "", ""},
        {{"--preset", preset, "--audio", "mp3"}, kAudio + "AudioCodec/CodecId", "leave out --audio"},
        {{"--preset", preset, "--set", kResampler + "SampleRate=44000"}, kResampler + "SampleRate", "SampleRate=44100"},
        {{"--preset", preset, "--set", kResampler + "SampleFmt=s16"}, kResampler + "SampleFmt", "SampleFmt=fltp"},
        {{"--format", "mp4", "--set", kAudio + "AudioCodec/EncodeOptions/Profile=aac_he"},
         kAudio + "AudioCodec/EncodeOptions/Profile",
         "Profile=aac_low"},
        {{"--preset", preset, "--set", kVideo + "VideoCodec/EncodeOptions/Profile=low"},
         kVideo + "VideoCodec/EncodeOptions/Profile",
         "Profile=baseline"},
        {{"--preset", preset, "--set", kVideo + "VideoCodec/RateControl=abr"},
         kVideo + "VideoCodec/RateControl",
         "RateControl=cbr"},
        {{"--preset", preset, "--set", kVideo + "VideoCodec/RateControl=vbr"},
         kVideo + "VideoCodec/Quality",
         "Quality="},
        {{"--preset", preset, "--set", kVideo + "VideoFrameRate/Fps=7"}, kVideo + "VideoFrameRate/Fps", "Fps=8/1"},
        {{"--preset", preset, "--set", kVideo + "VideoResize/Resizer/FrameSizeMode=auto"},
         kVideo + "VideoResize/Resizer/FrameSizeMode",
         "FrameSizeMode=original"},
        {{"--preset", preset, "--set", kAudio + "AudioVolume/VolumePercent=201"},
         kAudio + "AudioVolume/VolumePercent",
         "VolumePercent=200"},
        {{"--preset", preset, "--set", "Format/Limits/MaxVideo=0"}, "Format/Limits/MaxVideo", ""},
    };
    for (const auto& [arguments, path, wayOut] : cases) {
        SCOPED_TRACE(arguments.back());
        const Result result = Plan(arguments);
        EXPECT_EQ(result.status, 3);
        EXPECT_THAT(result.err, HasSubstr("datahelpers: "));
        const Json error = result.AsJson()["error"];
        EXPECT_EQ(error.value("path", ""), path);
        EXPECT_FALSE(error.value("allowed", Json()).empty());
        EXPECT_THAT(error.value("wayOut", ""), HasSubstr(wayOut));
    }
    EXPECT_THAT(Plan({"--preset", preset, "--audio", "mp3"}).err,
                HasSubstr("Incompatible preset codec id: aac, required mp3"));
}

// What is suggested is accepted: a user who follows it gets on.
TEST_F(Plans, AreAcceptedByTheWayOutThatARefusalNames) {
    for (const std::string& wrong :
         {kResampler + "SampleRate=44000", kVideo + "VideoCodec/EncodeOptions/Tune=x", kVideo + "VideoFrameRate/Fps=7",
          kVideo + "VideoResize/Resizer/Fit=x", kAudio + "AudioVolume/VolumePercent=-1"}) {
        SCOPED_TRACE(wrong);
        const std::string wayOut =
            Plan({"--format", "mp4", "--set", wrong}).AsJson()["error"]["wayOut"].get<std::string>();
        const std::string prefix = "--set ";
        ASSERT_TRUE(wayOut.starts_with(prefix));
        EXPECT_EQ(Plan({"--format", "mp4", "--set", wayOut.substr(prefix.size())}).status, 0);
    }
}

TEST_F(Plans, DropStreamsThatTheInputLacks) {
    const std::string sound = folder_ / "sound.wav";
    Process make("ffmpeg", {"-v", "error", "-i", clip_, "-vn", "-ac", "1", sound});
    ASSERT_EQ(make.Wait().status, 0);
    const Result result = Call({"plan", sound, "--format", "mp4", "--json"});
    ASSERT_EQ(result.status, 0) << result.err;
    const Json plan = result.AsJson();
    ASSERT_EQ(plan["settings"]["Streams"].size(), 1U);
    EXPECT_EQ(plan["settings"]["Streams"][0]["TypeId"], "audio");
    EXPECT_THAT(plan["notes"].dump(), HasSubstr("Streams/TypeId=video is dropped"));
    EXPECT_EQ(Call({"plan", sound, "--preset", folder_.Write("video.json", R"({"Format":{"Container":"mp4"},
        "Streams":[{"TypeId":"video"}]})")})
                  .status,
              3);
}

TEST_F(Plans, AreNotMadeOfWhatIsNoMedia) {
    for (const std::string& input : {folder_ / "absent", folder_.Path().string(), folder_.Write("text.mkv", "no media"),
                                     std::string("/dev/null"), std::string()}) {
        SCOPED_TRACE(input);
        EXPECT_EQ(Call({"plan", input, "--format", "mp4"}).status, 2);
    }
}

}  // namespace
}  // namespace ProgramTest
