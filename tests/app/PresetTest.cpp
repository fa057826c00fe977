#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "Failure.h"
#include "JsonTree.h"
#include "tests/app/Program.h"

namespace ProgramTest {
namespace {

using Kestro::Core::Property;
using ::testing::HasSubstr;

Property Parse(const std::string& text) { return App::ParseJsonTree(text, "preset.json"); }

TEST(JsonTree, KeepsOrderTypesAndExtremes) {
    const std::string text = R"({"b":true,"a":{"x":-9223372036854775808,"y":9223372036854775807,"z":2.5},)"
                             R"("Streams":[{"TypeId":"video"},{}],"e":{},"t":"30000/1001"})";
    const Property tree = Parse(text);
    EXPECT_EQ(tree[0].Name(), "b");
    EXPECT_EQ(tree["a"]["x"].GetInt64(), std::numeric_limits<int64_t>::min());
    EXPECT_EQ(tree["a"]["z"].Type(), Kestro::PropertyTypes::Double);
    EXPECT_EQ(tree["Streams"]["0"]["TypeId"].GetString(), "video");
    EXPECT_EQ(App::ToJson(tree).dump(), text);
}

TEST(JsonTree, SaysWhereATextIsWrong) {
    std::string deep;
    for (int i = 0; i < 100'000; ++i) deep += "{\"a\":";
    const struct {
        std::string text;
        const char* says;
    } cases[] = {
        {"", "line 1, column 1"},
        {"{\n  \"Format\": }", "line 2, column 13"},
        {"{\"a\": 1,}", "line 1, column 9"},
        {"{} x", "line 1, column 4"},
        {"{\n\"a\": 1,\n\"a\": 2}", "line 3, column 3: \"a\" stands twice"},
        {R"({"Format": {"Container": "mp4", "Container": "mov"}})", "\"Container\" stands twice at Format"},
        {R"({"a": 9223372036854775808})", "9223372036854775808 at a does not fit"},
        {R"({"a": -99999999999999999999})", "does not fit"},
        {R"({"a": 1e999})", "too large"},
        {R"({"a": NaN})", "line 1"},
        {R"({"a": null})", "null is no setting at a"},
        {R"({"a": [1]})", "a list is no setting at a"},
        {R"({"Streams": {}})", "is a list"},
        {"{\"a\": \"\xff\"}", "UTF-8"},
        {"[]", "list"},
        {"5", "object"},
        {deep, "32 levels"},
    };
    for (const auto& [text, says] : cases) {
        SCOPED_TRACE(text.substr(0, 60));
        try {
            Parse(text);
            ADD_FAILURE() << "accepted";
        } catch (const App::Failure& failure) {
            EXPECT_EQ(failure.Status(), App::ExitStatus::NotAcceptable);
            EXPECT_THAT(failure.what(), HasSubstr("preset.json, line "));
            EXPECT_THAT(failure.what(), HasSubstr(says));
        }
    }
}

class PresetFiles : public ::testing::Test {
protected:
    // A preset is read before the input: none is needed to see it refused.
    Result Plan(const std::string& preset, const Arguments& more = {}) {
        Arguments arguments{"plan", "absent.mkv", "--preset", folder_.Write("preset.json", preset)};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return Call(arguments);
    }

    Folder folder_;
};

TEST_F(PresetFiles, AreReadWholeOrRefused) {
    const std::string audio =
        R"({"Format":{"Container":"mp4"},"Streams":[{"TypeId":"audio","AudioCodec":{"CodecId":"aac",)";
    const std::string video =
        R"({"Format":{"Container":"mp4"},"Streams":[{"TypeId":"video","VideoCodec":{"CodecId":"h264",)";
    const struct {
        std::string preset;
        std::vector<std::string> says;
    } cases[] = {
        {R"({})", {"names no container", "--set Format/Container="}},
        {R"({"Format":"mp4"})", {"Format must be a node", "\"mp4\""}},
        {R"({"Format":{"Container":7}})", {"Format/Container must be a text, not 7"}},
        {R"({"Format":{"Container":"mp44"}})", {"\"mp44\"", "Did you mean \"mp4\"?"}},
        {R"({"Format":{"Containr":"mp4"}})", {"Format/Containr", "Did you mean \"Container\"?"}},
        {R"({"Format":{"Container":"mp4"},"Stream":{}})", {"\"Stream\"", "Did you mean \"Streams\"?"}},
        {R"({"Format":{"Container":"mp4","Limits":{"MaxVidio":1}}})", {"Format/Limits/MaxVidio", "\"MaxVideo\""}},
        {R"({"Format":{"Container":"mp4"},"Streams":[]})", {"no streams"}},
        {R"({"Format":{"Container":"mp4"},"Streams":[1]})", {"Streams/0"}},
        {R"({"Format":{"Container":"mp4"},"Streams":[{}]})", {"Streams/0"}},
        {R"({"Format":{"Container":"mp4"},"Streams":[{"TypeId":"vidio"}]})", {"Did you mean \"video\"?"}},
        {R"({"Format":{"Container":"mp4"},"Streams":[{"TypeId":"audio","AudioCodec":{"CodecId":"acc"}}]})",
         {"\"acc\"", "Did you mean \"aac\"?"}},
        {audio + R"("Bitrate":1}}]})", {"Streams/0/AudioCodec/Bitrate", "Did you mean \"BitRate\"?"}},
        {audio + R"("BitRate":2.5}}]})", {"Streams/0/AudioCodec/BitRate must be an integer, not 2.5"}},
        {audio + R"("BitRate":"128000"}}]})", {"must be an integer, not \"128000\""}},
        {audio + R"("EncodeOptions":{"Profil":"x"}}}]})", {"EncodeOptions/Profil", "\"Profile\""}},
        {audio + R"("EncodeOptions":3}}]})", {"must be a node", "not 3"}},
        // At home elsewhere.
        {video + R"("Width":640}}]})", {"Streams/0/VideoResize/Resizer/Width"}},
        {video + R"("Fps":"30/0"}}]})", {"Streams/0/VideoCodec/Fps must be a ratio"}},
        {video + R"("Fps":29.97}}]})", {"Streams/0/VideoCodec/Fps must be a ratio", "30000/1001"}},
        {video + R"("Cover":1}}]})", {"must be true or false, not 1"}},
        {audio + R"("BitRate":"auto"}}]})", {"must be an integer, not \"auto\""}},
        {video + R"("Fps":"auto"}}]})", {"Streams/0/VideoCodec/Fps must be a ratio"}},
        {audio + R"("RateControl":"cbr"},"AudioResample":{"Resampler":{"SampleRate":"Auto"}}}]})",
         {"must be an integer, not \"Auto\""}},
    };
    for (const auto& [preset, says] : cases) {
        SCOPED_TRACE(preset);
        const Result result = Plan(preset);
        EXPECT_EQ(result.status, 3);
        // Messages are wrapped; a blank may be a line's end.
        std::string text = result.err;
        for (std::size_t at = 0; (at = text.find("\n  ", at)) != std::string::npos;) text.replace(at, 3, " ");
        for (const std::string& part : says) EXPECT_THAT(text, HasSubstr(part));
    }
}

TEST_F(PresetFiles, ThatAreWellFormedGoOnToTheInput) {
    for (const char* preset : {R"({"Format":{"Container":"mp4"}})",
                               R"({"Format":{"Container":"mp4"},"Streams":[{"TypeId":"audio"},{"TypeId":"subtitle"}]})",
                               R"({"Format":{"Container":"mp4"},"Streams":[{"TypeId":"video","VideoCodec":
                                   {"CodecId":"auto","Threads":4,"BitsPerPixel":24,"Fps":25,"Cover":false,
                                    "EncodeOptions":{"ApprovedVbrOnly":true}}}]})",
                               R"({"Format":{"Container":"mp4"},"Streams":[{"TypeId":"audio","AudioCodec":
                                   {"CodecId":"auto","RateControl":"auto"},"AudioResample":{"Resampler":
                                   {"SampleRate":"auto","Layout":"auto"}}},
                                   {"TypeId":"video","VideoFrameRate":{"Fps":"auto"}}]})"}) {
        SCOPED_TRACE(preset);
        const Result result = Plan(preset);
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.err, HasSubstr("absent.mkv"));
    }
    EXPECT_EQ(Call({"plan", "absent.mkv", "--preset", folder_ / "absent.json"}).status, 2);
    EXPECT_EQ(Call({"plan", "absent.mkv", "--preset", folder_.Path()}).status, 2);
}

TEST_F(PresetFiles, TakeChangesFromTheCommandLine) {
    const std::string preset =
        R"({"Format":{"Container":"mp4"},"Streams":[{"TypeId":"audio","AudioCodec":{"CodecId":"aac"}}]})";
    const struct {
        const char* set;
        int status;  // 2: the change is fine, and the input is looked for
        const char* says;
    } cases[] = {
        {"Streams/TypeId=audio/AudioCodec/BitRate=128000", 2, "absent.mkv"},
        {"Streams/0/AudioResample/Resampler/SampleRate=44100", 2, "absent.mkv"},
        {"Streams/0/AudioResample/Resampler/SampleRate=auto", 2, "absent.mkv"},
        {"Streams/0/AudioCodec/CodecId=mp3", 2, "absent.mkv"},
        {"Format/Container=matroska", 2, "absent.mkv"},
        {"Streams/TypeId=audio/AudioCodec/BitRate=1e5", 3, "must be an integer"},
        {"Streams/TypeId=audio/AudioCodec/BitRate=auto", 3, "must be an integer"},
        {"Streams/TypeId=audio/AudioCodec/BitRte=1", 3, "\"BitRate\""},
        {"Streams/TypeId=audio/AudioCodec=1", 3, "must be a node"},
        {"Streams/TypeId=audio=1", 3, "is a stream"},
        {"Streams/TypeId=video/VideoCodec/BitRate=1", 3, "There is no stream"},
        {"Streams/7/AudioCodec/BitRate=1", 3, "There is no stream"},
        {"Container=mp4", 3, "Unknown setting"},
        {"Format/Progressiv=true", 3, "\"Progressive\""},
        {"=1", 2, "PATH=VALUE"},
    };
    for (const auto& [set, status, says] : cases) {
        SCOPED_TRACE(set);
        const Result result = Plan(preset, {"--set", set});
        EXPECT_EQ(result.status, status);
        EXPECT_THAT(result.err, HasSubstr(says));
    }
}

}  // namespace
}  // namespace ProgramTest
