#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <sstream>

#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/IPreset.h"

#include "tests/app/Program.h"

namespace ProgramTest {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

TEST(List, NamesEveryHelperOfTheRegistry) {
    const Result all = Call({"list", "--json"});
    ASSERT_EQ(all.status, 0) << all.err;
    const Json json = all.AsJson();
    const std::pair<const char*, std::string> kinds[] = {
        {"formats", Kestro::Conf::IPreset::KEY_FORMAT},
        {"audio", Kestro::Conf::IPreset::KEY_FILTER_AUDIO_CODEC},
        {"video", Kestro::Conf::IPreset::KEY_FILTER_VIDEO_CODEC},
    };
    for (const auto& [kind, type] : kinds) {
        SCOPED_TRACE(kind);
        const Result text = Call({"list", kind});
        std::set<std::string> listed;
        for (const Json& entry : json[kind]) listed.insert(entry["name"]);
        std::set<std::string> registered;
        for (const auto& [name, helper] : GetAvailableDataHelpers(type)) {
            registered.insert(name);
            EXPECT_THAT(text.out, HasSubstr("  " + name));
        }
        EXPECT_EQ(listed, registered);
    }
    EXPECT_EQ(json["filters"].size(), 5U);
}

// Every helper can be shown, both ways, and in no line wider than the terminal unless one word is.
TEST(Show, WorksForEveryHelper) {
    const Json all = Call({"list", "--json"}).AsJson();
    for (const auto& [plural, kind] : {std::pair("formats", "format"), std::pair("audio", "audio"),
                                       std::pair("video", "video"), std::pair("filters", "filter")}) {
        for (const Json& entry : all[plural]) {
            const std::string name = entry["name"];
            SCOPED_TRACE(std::string(kind) + " " + name);
            const Result text = Call({"show", kind, name}, {.variables = {{"COLUMNS", "60"}}});
            EXPECT_EQ(text.status, 0) << text.err;
            std::istringstream lines(text.out);
            for (std::string line; std::getline(lines, line);) {
                const bool isOneWord = line.find(' ', line.find_first_not_of(' ')) == std::string::npos;
                EXPECT_TRUE(line.size() <= 60 || isOneWord) << line;
            }
            const Result json = Call({"show", plural, name, "--json"});
            ASSERT_EQ(json.status, 0) << json.err;
            EXPECT_EQ(json.AsJson()["name"], name);
        }
    }
}

TEST(Show, PutsConstraintsAndRulesInWords) {
    const Result mp4 = Call({"show", "format", "mp4"}, {.variables = {{"COLUMNS", "1000"}}});
    EXPECT_THAT(mp4.out, HasSubstr("Streams/TypeId=audio/AudioCodec/CodecId: aac ac3 dts mp3\n"));
    EXPECT_THAT(mp4.out, HasSubstr("When Streams/TypeId=audio/AudioCodec/CodecId is mp3, AudioResample/Resampler/"
                                   "SampleRate must be one of 44100 48000 32000 22050 24000 16000.\n"));
    const Result fps = Call({"show", "filter", "VideoFrameRate"}, {.variables = {{"COLUMNS", "1000"}}});
    EXPECT_THAT(fps.out, HasSubstr("29.97 = 30000/1001, 30 = 30/1"));
    const Result resize = Call({"show", "filter", "VideoResize"}, {.variables = {{"COLUMNS", "1000"}}});
    EXPECT_THAT(resize.out, HasSubstr("VideoResize/Resizer/Width must be even."));
}

TEST(Show, AddsTheAutomaticChoices) {
    const struct {
        const char* kind;
        const char* name;
        const char* added;
    } cases[] = {
        {"audio", "mp3", "RateControl: cbr_auto cbr vbr\n"},
        {"audio", "mp3", "Layout must be one of Auto = unknown, mono, stereo.\n"},
        {"audio", "alac", "SampleRate must be from 1 to 768000, or Auto = -1.\n"},
        {"video", "h264", "for that of the input, or Auto = 0/1.\n"},
        {"format", "flv", "AudioCodec/CodecId: auto mp3 aac\n"},
    };
    for (const auto& [kind, name, added] : cases) {
        SCOPED_TRACE(added);
        const Surroundings wide{.variables = {{"COLUMNS", "1000"}}};
        EXPECT_THAT(Call({"show", kind, name, "--auto"}, wide).out, HasSubstr(added));
        EXPECT_THAT(Call({"show", kind, name}, wide).out, Not(HasSubstr(added)));
    }
    const Json alac = Call({"show", "--auto", "audio", "alac", "--json"}).AsJson();
    EXPECT_EQ(alac["auto"], true);
    EXPECT_EQ(alac["rules"][0]["then"]["max"], 768000);
    EXPECT_EQ(alac["rules"][0]["then"]["auto"], -1);
    EXPECT_EQ(Call({"show", "--auto", "filter", "AudioResample"}).status, 0);
    EXPECT_THAT(Call({"show", "--auto", "video", "auto"}).err, HasSubstr("There is no video codec"));
}

TEST(Show, AnswersInTheDocumentedShape) {
    EXPECT_EQ(Call({"show", "filter", "AudioVolume", "--json"}).out, R"({
  "command": "show",
  "status": 0,
  "kind": "filter",
  "name": "AudioVolume",
  "auto": false,
  "defaults": {
    "AudioVolume": {
      "VolumePercent": 100
    }
  },
  "filters": [],
  "constraints": [
    {
      "path": "VolumePercent",
      "min": 0,
      "max": 200
    }
  ],
  "rules": []
}
)");
}

TEST(CommandLine, WrongUsageIsExplained) {
    const struct {
        Arguments arguments;
        const char* says;
    } cases[] = {
        {{}, "A command is required."},
        {{"lst"}, "Did you mean \"list\"?"},
        {{"list", "video", "more"}, "more"},
        {{"list", "vidoe"}, "Did you mean \"video\"?"},
        {{"show", "audio"}, "NAME is required"},
        {{"show", "audio", "acc"}, "Did you mean \"aac\"?"},
        {{"plan", "--format", "mp4"}, "INPUT is required"},
        {{"plan", "clip.mkv"}, "--preset FILE or --format FORMAT"},
        {{"plan", "clip.mkv", "--format", "mp4", "--preset", "x.json"}, "excludes"},
        {{"plan", "clip.mkv", "--format", "mp4", "--set", "BitRate"}, "PATH=VALUE"},
        {{"convert", "clip.mkv", "--format", "mp4"}, "OUTPUT is required"},
    };
    for (const auto& [arguments, says] : cases) {
        SCOPED_TRACE(says);
        const Result result = Call(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, HasSubstr(says));
    }
}

TEST(CommandLine, FailuresAreJsonWhereItIsAskedFor) {
    const Result result = Call({"show", "audio", "acc", "--json"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, HasSubstr("There is no audio codec"));
    const Json json = result.AsJson();
    EXPECT_EQ(json["command"], "show");
    EXPECT_EQ(json["status"], 2);
    EXPECT_EQ(json["error"]["value"], "acc");
    EXPECT_THAT(json["error"]["allowed"], ::testing::Contains("aac"));

    EXPECT_EQ(Call({"plan", "--json", "--bogus"}).AsJson()["status"], 2);
    EXPECT_EQ(Call({"list", "--", "--json"}).out, "");  // a name here
}

TEST(CommandLine, HelpAndVersionAreNoFailures) {
    EXPECT_EQ(Call({"--version"}).status, 0);
    const Result help = Call({"convert", "--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.out, AllOf(HasSubstr("INPUT"), HasSubstr("OUTPUT"), HasSubstr("--set"), Not(HasSubstr("{"))));
}

TEST(Fits, TellWhereACodecGoesAndWhyNot) {
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"vp9", "webm", "yes"},
        {"aac", "mka", "mka (written by matroska)  yes"},
        {"opus", "webm", "yes"},
        {"vp9", "mov", "refused by the muxer"},
        {"vp9", "mpegts", "would not read back as vp9"},
        {"png", "bmp", "bmp alone"},
    };
    for (const auto& [codec, container, answer] : rows) {
        const Result result = Call({"fits", codec, container});
        EXPECT_EQ(result.status, 0);
        EXPECT_THAT(result.out, testing::HasSubstr(answer)) << codec << " " << container;
    }
    const Json all = Call({"fits", "--codec", "h264", "--json"}).AsJson();
    const Json m4b = Call({"fits", "aac", "m4b", "--json"}).AsJson()["fits"][0];
    EXPECT_TRUE(m4b["fits"] == true && m4b["muxer"] == "ipod" && m4b["ownMuxer"] == false) << m4b;
    EXPECT_EQ(all["fits"].size(), Call({"list", "formats", "--json"}).AsJson()["formats"].size());
    EXPECT_GT(Call({"fits", "--format", "mp4", "--json"}).AsJson()["fits"].size(), 60U);
    for (const Arguments& wrong :
         {Arguments{"fits"}, {"fits", "nope", "mp4"}, {"fits", "aac", "nope"}, {"fits", "aac", "--codec", "mp3"}}) {
        EXPECT_EQ(Call(wrong).status, 2);
    }
}

}  // namespace
}  // namespace ProgramTest
