#include "tests/app/Program.h"

namespace ProgramTest {
namespace {

class Presets : public Shell {};

std::string Nested(int levels) {
    std::string text;
    for (int i = 0; i < levels; ++i) text += R"({"a":)";
    return text + "1" + std::string(static_cast<std::size_t>(levels), '}');
}

std::string Many(int settings) {
    std::string text = "{\"a\": 1";
    for (int i = 1; i < settings; ++i) text += ", \"" + std::to_string(i) + "\": 1";
    return text + "}";
}

// A preset is read before the input: none is needed to see it refused. Status 2 is the missing input's.
TEST_F(Presets, AreReadWholeOrRefused) {
    const std::string fine = "Cannot read absent.mkv";
    const std::string mp4 = R"({"Format":{"Container":"mp4"},"Streams":[{"TypeId":)";
    const std::string audio = mp4 + R"("audio","AudioCodec":{"CodecId":"aac")";
    const std::string video = mp4 + R"("video","VideoCodec":{"CodecId":"h264")";
    const Table<3> rows = {
        {"", "", "preset.json, line 1, column 1: no valid JSON"},
        {"{\n  \"Format\": }", "", "line 2, column 13"},
        {"{} x", "", "line 1, column 4"},
        {"{\n\"a\": 1,\n\"a\": 2}", "", R"(line 3, column 3: "a" stands twice)"},
        {R"({"Format": {"Container": "mp4", "Container": "mov"}})", "", R"("Container" stands twice at Format)"},
        {R"({"a": 9223372036854775808})", "", "9223372036854775808 at a does not fit"},
        {R"({"a": -99999999999999999999})", "", "does not fit"},
        {R"({"a": 1e999})", "", "too large"},
        {R"({"a": [1]})", "", "a list is no setting at a"},
        {R"({"Streams": {}})", "", "is a list"},
        {"{\"a\": \"\xff\"}", "", "UTF-8"},
        {R"({"\u001b[2J": {"\u007f": null}})", "", R"(null is no setting at \x1b[2J/\x7f)"},
        {"5", "", "an object"},
        {Nested(32), "", "Unknown setting \"a\""},
        {Nested(33), "", "deeper than 32 levels"},
        {Nested(100'000), "", "deeper than 32 levels"},
        {R"({"a": ")" + std::string(4097, 'a') + R"("})", "", "a text at a is longer than 4096 bytes"},
        {R"({")" + std::string(4097, 'a') + R"(": 1})", "", "is longer than 4096 bytes"},
        {Many(4097), "", "more than 4096 settings"},
        {R"({})", "", "names no container.\n  setting: Format/Container\n"},
        {R"({"Format":"mp4"})", "", R"(Format must be a node with settings of its own, not "mp4")"},
        {R"({"Format":{"Container":"mp44"}})", "", R"(Did you mean "mp4"?)"},
        {R"({"Format":{"Containr":"mp4"}})", "", R"("Format/Containr". Did you mean "Container"?)"},
        {R"({"Format":{"Container":"mp4"},"Stream":{}})", "", R"(Did you mean "Streams"?)"},
        {R"({"Format":{"Container":"mp4","Limits":{"MaxVidio":1}}})", "",
         R"(Limits/MaxVidio". Did you mean "MaxVideo")"},
        {R"({"Format":{"Container":"mp4"},"Streams":[]})", "", "no streams"},
        {R"({"Format":{"Container":"mp4"},"Streams":[1]})", "", "setting: Streams/0"},
        {mp4 + R"("vidio"}]})", "", R"(Did you mean "video"?)"},
        {audio + R"(,"Bitrate":1}}]})", "", R"("Streams/0/AudioCodec/Bitrate". Did you mean "BitRate"?)"},
        {audio + R"(,"BitRate":2.5}}]})", "", "Streams/0/AudioCodec/BitRate must be an integer, not 2.5"},
        {audio + R"(,"EncodeOptions":3}}]})", "", "must be a node with settings of its own, not 3"},
        {video + R"(,"Width":640}}]})", "", R"(Did you mean "Streams/0/VideoResize/Resizer/Width"?)"},
        {video + R"(,"Fps":"30/0"}}]})", "", "Streams/0/VideoCodec/Fps must be a ratio"},
        {video + R"(,"Fps":29.97}}]})", "", R"(must be a ratio, as the text "30000/1001", not 29.97)"},
        {video + R"(,"Cover":1}}]})", "", "must be true or false, not 1"},
        {audio + R"(},"AudioResample":{"Resampler":{"SampleRate":"Auto"}}}]})", "", R"(an integer, not "Auto")"},
        {mp4 + R"("audio"},{"TypeId":"subtitle"}]})", "", fine},
        {video +
             R"(,"Fps":25,"Cover":false,"EncodeOptions":{"ApprovedVbrOnly":true}},"VideoFrameRate":{"Fps":"auto"}}]})",
         "", fine},
        {audio + R"(,"RateControl":"auto"},"AudioResample":{"Resampler":{"SampleRate":"auto"}}}]})", "", fine},
        {audio + "}}]}", "$ac/BitRate=128000", fine},
        {audio + "}}]}", "--set Streams/0/AudioCodec/CodecId=mp3", fine},
        {audio + "}}]}", "$sound/SampleRate=auto", fine},
        {audio + "}}]}", "--set Format/Container=matroska", fine},
        {audio + "}}]}", "$ac/BitRate=1e5", "must be an integer"},
        {audio + "}}]}", "$ac/BitRate=auto", "must be an integer"},
        {audio + "}}]}", "$ac=1", "must be a node"},
        {audio + "}}]}", "$a=1", R"("Streams/TypeId=audio" is a stream, not a setting)"},
        {audio + "}}]}", "$vc/BitRate=1", R"(There is no stream "Streams/TypeId=video")"},
        {audio + "}}]}", "--set Streams/7/AudioCodec/BitRate=1", "There is no stream"},
        {audio + "}}]}", "--set Container=mp4", "Unknown setting"},
        {audio + "}}]}", "--set Format/Progressiv=true", R"(Did you mean "Progressive"?)"},
        // A stream that does not say what it is hides none of those behind it.
        {R"({"Format":{"Container":"mp4"},"Streams":[{"AudioCodec":{}},{"TypeId":"audio"}]})", "$ac/BitRte=1",
         R"("Streams/TypeId=audio/AudioCodec/BitRte". Did you mean "BitRate"?)"},
    };
    for (const auto& [preset, set, says] : rows) {
        Write("preset.json", preset);
        const Result result = Run("datahelpers plan absent.mkv --preset preset.json " + set);
        EXPECT_EQ(result.status, says == fine ? 2 : 3) << preset.substr(0, 200) << set;
        EXPECT_THAT(result.err, HasSubstr(says)) << preset.substr(0, 200) << set;
    }
    for (const std::string file : {"absent", "..", "large"}) {
        EXPECT_EQ(Run("head -c 1048577 /dev/zero >large; datahelpers plan absent.mkv --preset " + file).status, 2);
    }
}

// What is wrong is told at once, and what is suggested leads on to the next; a plan that is strict says the same.
TEST_F(Presets, AreCheckedAsAWhole) {
    const std::string stream = R"({"Format":{"Container":"mp4"},"Streams":[{"TypeId":"video","VideoCodec":{"CodecId":)";
    const std::string resize = R"("VideoResize":{"Resizer":{"FrameSizeMode":"custom","Width":321,"Height":180}}}]})";
    const Table<2> rows = {
        {"", "invalid-json"},
        {R"({"Format":{"Container":"mp5"}})", "unknown-name"},
        {stream + R"("h264","BitRate":"much","Threds":1}}]})", "wrong-type unknown-setting"},
        {stream + R"("vp8"}}]})", "codec-not-taken"},
        {stream + R"("h264","RateControl":"abr","BitRate":1,"EncodeOptions":{"Profile":"low"}},)" + resize,
         "value-not-accepted value-not-accepted value-not-accepted value-corrected"},
        {stream + R"("h264"},)" + resize, "value-corrected"},
        {stream + R"("h264"}}]})", ""},
    };
    for (const auto& [preset, codes] : rows) {
        Write("preset.json", preset);
        const Result result = Run("datahelpers check preset.json --json");
        std::string found;
        const Json report = result.AsJson();
        for (const Json& problem : report["problems"]) {
            found += (found.empty() ? "" : " ") + problem["code"].get<std::string>();
            EXPECT_FALSE(problem["message"].get<std::string>().empty());
        }
        EXPECT_EQ(found, codes) << preset;
        EXPECT_EQ(result.status, codes.empty() ? 0 : 3) << preset;
        EXPECT_EQ(Run("datahelpers plan $clip --strict --preset preset.json").status, result.status) << preset;
    }
    EXPECT_EQ(Run("for preset in $presets/*.json; do datahelpers check $preset; done | sort -u").out,
              "Nothing is wrong with it.\n");
}

}  // namespace
}  // namespace ProgramTest
