#include <set>

#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/IPreset.h"

#include "tests/app/Program.h"

namespace ProgramTest {
namespace {

using Kestro::Conf::IPreset;

class HelperReport : public Shell {};

TEST_F(HelperReport, ListsEveryHelperOfTheRegistry) {
    Json all = Report("list");
    for (const auto& [kind, type] :
         {std::pair("formats", IPreset::KEY_FORMAT), std::pair("audio", IPreset::KEY_FILTER_AUDIO_CODEC),
          std::pair("video", IPreset::KEY_FILTER_VIDEO_CODEC)}) {
        std::set<std::string> listed;
        for (const Json& entry : all[kind]) listed.insert(entry.at("name"));
        std::set<std::string> registered;
        for (const auto& [name, helper] : GetAvailableDataHelpers(type)) registered.insert(name);
        EXPECT_EQ(listed, registered);
        EXPECT_EQ(Report(std::string("list ") + kind)[kind], all[kind]);
    }
    EXPECT_EQ(all["filters"].size(), 5U);
    EXPECT_EQ(Report("fits --codec h264")["fits"].size(), all["formats"].size());
    EXPECT_GT(Report("fits --format mp4")["fits"].size(), 60U);
}

// A sample, the library's own tests walk through all. No line is wider than the terminal unless one word is.
TEST_F(HelperReport, ShowsHelpersOfEveryKind) {
    EXPECT_EQ(Run(R"(export COLUMNS=60; for kind in format audio video filter; do
        for name in $(datahelpers list $kind | awk "NR > 1 && ($(expr $kind = filter) || NR % 12 == 0) {print \$1}"); do
            datahelpers show $kind $name && datahelpers show $kind $name --auto --json >&2 || printf '%60s fails\n' $name
        done
        done | awk 'length > 60 && /[^ ] [^ ]/')")
                  .out,
              "");
}

TEST_F(HelperReport, AnswersOrExplainsWrongUsage) {
    const Table<3> rows = {
        {"0", "list formats", "  m4b         muxer ipod, audio aac, video mjpeg\n"},
        {"0", "list video", "  hevc        encoder libx265, containers "},
        {"0", "list filters", "  VideoResize     type video\n"},
        {"0", "show format mp4", "\n  Streams/TypeId=audio/AudioCodec/CodecId: aac ac3 dts mp3\n"},
        {"0", "show format mp4",
         "\n  When Streams/TypeId=audio/AudioCodec/CodecId is mp3, AudioResample/Resampler/"
         "SampleRate must be one of 44100 48000 32000 22050 24000 16000.\n"},
        {"0", "show filter VideoFrameRate", "29.97 = 30000/1001, 30 = 30/1"},
        {"0", "show filter VideoResize", "VideoResize/Resizer/Width must be even.\n"},
        {"0", "show filter AudioVolume", "VolumePercent: from 0 to 200\n"},
        {"0", "show audio dts", "\nFilters before the encoder\n  AudioResample\n"},
        {"0", "show audio mp3", "RateControl: cbr vbr\n"},
        {"0", "show audio mp3 --auto", "RateControl: cbr_auto cbr vbr\n"},
        {"0", "show audio mp3 --auto", "Layout must be one of Auto = unknown, mono, stereo.\n"},
        {"0", "show audio alac --auto", "SampleRate must be from 1 to 768000, or Auto = -1.\n"},
        {"0", "show audio alac", "SampleRate must be from 1 to 768000.\n"},
        {"0", "show video h264 --auto", "for that of the input, or Auto = 0/1.\n"},
        {"0", "show format flv --auto", "AudioCodec/CodecId: auto "},
        {"0", "fits vp9 webm", "vp9  webm  yes\n"},
        {"0", "fits H.265 mkv", "hevc  matroska  yes\n"},
        {"0", "list presets", "  dvd-pal  "},
        {"0", "fits aac mka", "mka (written by matroska)  yes\n"},
        {"0", "fits aac m4b --json", "\"ownMuxer\": false"},
        {"0", "fits prores mov", "yes, as a copy"},
        {"0", "list video", "prores      encoder prores_ks, containers none\n"},
        {"0", "fits vp9 mov", "no, refused by the muxer\n"},
        {"0", "fits vp9 mpegts", "no, it would not read back as vp9\n"},
        {"0", "fits png bmp", "no, its files are of bmp alone\n"},
        {"0", "--version", "datahelpers "},
        {"0", "convert --help", "PATH=VALUE"},
        {"0", "help convert", "PATH=VALUE"},
        {"2", "", "A command is required."},
        {"2", "lst", "Did you mean \"list\"?"},
        {"2", "list aduoi", "Did you mean \"audio\"?"},
        {"2", "list -- --json", "\"--json\" is no kind"},
        {"2", "show audio", "NAME is required"},
        {"2", "show audio acc", "Did you mean \"aac\"?"},
        {"2", "show video h256", "Did you mean \"h265\"?"},
        {"2", "show --auto video auto", "There is no video codec \"auto\""},
        {"2", "show audio \"$(printf '\\033[2Jaac\\177')\"", "\\x1b[2Jaac\\x7f"},
        {"2", "plan --format mp4", "INPUT is required"},
        {"2", "plan clip.mkv", "--preset PRESET or --format FORMAT"},
        {"2", "plan clip.mkv --format mp4 --preset x.json", "excludes"},
        {"2", "plan clip.mkv --format mp4 --set BitRate", "PATH=VALUE"},
        {"2", "convert clip.mkv --format mp4", "OUTPUT is required"},
        {"2", "fits", "A codec or a container is required."},
        {"2", "fits nope mp4", "no codec \"nope\""},
        {"2", "fits aac mp44", "Did you mean \"mp4\"?"},
    };
    for (const auto& [status, command, says] : rows) {
        const Result& result = RunOnce("datahelpers " + command);
        EXPECT_EQ(std::to_string(result.status), status) << command;
        EXPECT_THAT(status == "0" ? result.out : result.err, HasSubstr(says)) << command;
        EXPECT_EQ(status == "0" ? result.err : result.out, "") << command;
    }
}

TEST_F(HelperReport, ReportsInTheDocumentedShape) {
    EXPECT_EQ(Report("show filter AudioVolume"), Json::parse(R"({"command": "show", "status": 0, "kind": "filter",
        "name": "AudioVolume", "auto": false, "defaults": {"AudioVolume": {"VolumePercent": 100}}, "filters": [],
        "constraints": [{"path": "VolumePercent", "label": "Volume", "unit": "%",
        "help": "Amplitude in relation to the source's; 100 leaves the sound as it is.", "min": 0, "max": 200}],
        "rules": []})"));
    EXPECT_EQ(Report("show --auto audio alac")["rules"][0]["then"]["auto"], -1);
    EXPECT_EQ(Run("datahelpers plan --json --bogus").AsJson()["status"], 2);
    Json error = Run("datahelpers show audio acc --json").AsJson();
    EXPECT_EQ(error["command"], "show");
    EXPECT_EQ(error["error"]["value"], "acc");
    EXPECT_THAT(error["error"]["allowed"], ::testing::Contains("aac"));
}

}  // namespace
}  // namespace ProgramTest
