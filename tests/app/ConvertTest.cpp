#include "tests/app/Program.h"

namespace ProgramTest {
namespace {

class Conversions : public Shell {
protected:
    /// convert INPUT OUTPUT, in "$1" and "$2" for the lines before it, with the quickest settings.
    static Result Convert(const std::string& files, const std::string& before = "", const std::string& options = "") {
        const std::string command =
            "\ndatahelpers convert --overwrite --format mp4 $vc/EncodeOptions/Preset=ultrafast ";
        return Run("set -- " + files + "\n" + before + command + options + R"( -- "$1" "$2")");
    }
};

TEST_F(Conversions, MakeWhatThePlanSays) {
    Run("ff -i $clip -f lavfi -i color=s=64x64:d=0.1 -map 0:a -map 1 -ac 2 -c:v png -disposition:v attached_pic "
        "song.mp3");
    const Table<2> rows = {
        {"$clip out --preset $presets/mp4-h264-aac.json",
         "h264,High,322,180,1:1,yuv420p,24000/1001,0\naac,LC,48000,stereo,0/0,0\n"},
        {"$clip out --preset $presets/dvd-pal.json", "mpeg2video,Main,720,576,64:45,yuv420p,25/1,0"},
        {"$clip out --preset $presets/matroska-h264-mp3.json", "mp3,unknown,44100,stereo,"},
        {"song.mp3 out --format mp3", "png,unknown,64,64,"},
        {"song.mp3 out --format mp3 --video mjpeg", "mjpeg,Baseline,64,64,1:1,yuvj"},
        {"song.mp3 out --format m4a", ",1\n"},
        {"song.mp3 out --format flac", ",1\n"},
        {"song.mp3 out --format mka", "png,unknown,64,64,"},
    };
    for (const auto& [arguments, streams] : rows) {
        Json output = Report("convert --overwrite " + arguments)["output"];
        EXPECT_EQ(output["differences"], Json::array()) << arguments;
        EXPECT_EQ(output["messages"], Json::array()) << arguments;
        const Result probe = Run(
            "stat -c %s out; ffprobe -v error -of csv=p=0 -show_entries stream=codec_name,profile,width,height,pix_fmt,"
            "r_frame_rate,sample_aspect_ratio,sample_rate,channel_layout:disposition=attached_pic out");
        EXPECT_THAT(probe.out, ::testing::StartsWith(output["size"].dump() + "\n")) << arguments;
        EXPECT_THAT(probe.out, HasSubstr(streams)) << arguments;
    }
}

TEST_F(Conversions, MeetASize) {
    Run("ff -f lavfi -i testsrc2=s=320x240:d=10,noise=c0s=20:c0f=t -f lavfi -i sine=d=10 -c:v ffv1 -c:a flac film.mkv");
    for (const std::string made : {"--format mp4", "--format avi --video mpeg4 --audio mp3"}) {
        const int64_t size = Report("convert film.mkv out --size 400k " + made)["output"]["size"];
        EXPECT_LE(size, 400'000) << made;
        EXPECT_GE(size, 384'000) << made;
        Run("rm out");
    }
}

TEST_F(Conversions, MakeSequencesOfPictures) {
    // In no folder a % begins a pattern.
    const std::string convert = "mkdir -p %d; cd %d; datahelpers convert --sequence ../$clip 'frames %d' --format ";
    EXPECT_EQ(Run(convert + "targa --json").AsJson()["output"]["files"], 8);
    EXPECT_EQ(Run(convert + "png").status, 2) << "it is there already";
    EXPECT_EQ(Run("rm -r %d; " + convert + "mp4").status, 3);
    EXPECT_EQ(Run(convert + "jpegls >&2; ls -A; ls frames* | tail -n 1").out, "frames %d\n000008.jls\n");
}

TEST_F(Conversions, OfHigherQualityAreLarger) {
    Run("ff -i $clip -t 0.1 -s 128x72 -c:v ffv1 -c:a copy small.mkv");
    for (const std::string row :
         {"mp4 --video h264", "mp4 --video hevc", "mp4 --video mpeg4", "webm --video vp8", "webm --video vp9",
          "matroska --video av1", "ogv --video theora", "matroska --video mjpeg", "vob --video mpeg2video",
          "jpeg2000 --video jpeg2000", "ogg --audio vorbis", "mp3 --audio mp3"}) {
        const std::string codec = row.find("--video") != std::string::npos ? " $vc" : " $ac";
        const Result result = Run("for quality in 1 100; do datahelpers convert small.mkv out --overwrite --format " +
                                  row + codec + "/RateControl=vbr" + codec +
                                  "/Quality=$quality >&2 && stat -c %s out || echo 9999999\n"
                                  "done | sort -nuc");
        EXPECT_EQ(result.status, 0) << row << result.err;
    }
}

TEST_F(Conversions, TakeNamesAsTheyAre) {
    for (const char* files :
         {"-in.mkv -out.mp4", "a:b.mkv c:d.mp4", "%03d.mkv %d.mp4", "\\''\".mkv' '$(c)\n.mp4'",
          R"($(printf 'x\302\233\342\200\256\377.mkv') $(printf 'y\302\233\342\200\256\377.mp4'))"}) {
        EXPECT_EQ(Convert(files, R"(cp $clip ./"$1")").status, 0) << files;
    }
    EXPECT_EQ(Convert("still%02d.png still.mp4", "ff -i $clip -frames:v 1 -update 1 still%02d.png").status, 0);
    EXPECT_EQ(Convert("%03d.png clip.mp4", "cp $clip %03d.png").status, 0);
    EXPECT_EQ(Run("ls -A | wc -l").out, "15\n");  // one has two lines
}

TEST_F(Conversions, TakeTheContainerFromTheName) {
    const Table<3> rows = {
        {"a.mkv", "", "matroska"},
        {"A.JPG", "", "image2"},
        {"a.ts", "", "mpegts"},
        {"b.mp4 --format mkv", "The name b.mp4 is that of mp4; what it gets is matroska", "matroska"},
        {"a.mpg --preset dvd-pal", "", "dvd"},
        {"c.mkv --preset own", "", "matroska"}};
    Run("mkdir -p datahelpers/presets; cp $presets/matroska-h264-mp3.json datahelpers/presets/own.json");
    for (const auto& [arguments, notes, container] : rows) {
        const Result result = Run("XDG_CONFIG_HOME=$PWD datahelpers convert $clip --json " + arguments);
        EXPECT_EQ(result.AsJson().value("container", result.err), container) << arguments;
        EXPECT_THAT(result.AsJson().value("notes", Json()).dump(), HasSubstr(notes)) << arguments;
    }
    const Result quiet = Run("datahelpers convert $clip quiet.mkv --quiet; echo; datahelpers convert $clip out.film");
    EXPECT_EQ(quiet.status, 2);
    EXPECT_EQ(quiet.out, "\n");
    EXPECT_THAT(quiet.err, ::testing::StartsWith("datahelpers: A preset or a format is required"));
}

TEST_F(Conversions, ReadNoFileThatWasNotNamed) {
    // FFmpeg 7 knows the first kind by its name alone.
    const Table<3> rows = {
        {R"(#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\nfile://%s/../hls.ts\n#EXT-X-ENDLIST\n)", "upload.m3u8",
         "/hls.ts"},
        {R"(ffconcat version 1.0\n# %s\nfile private.mkv\nfile private.mkv\n)", "upload.mp4", "private.mkv"},
        {R"(<MPD xmlns="urn:mpeg:dash:schema:mpd:2011" type="static" profiles="dash:profile:isoff-on-demand" )"
         R"(mediaPresentationDuration="PT1S"><Period id="%s">)"
         R"(<AdaptationSet mimeType="video/mp4"><Representation id="0" bandwidth="9"><BaseURL>private.mp4</BaseURL>)"
         R"(</Representation></AdaptationSet></Period></MPD>)",
         "upload.mp4", "private.mp4"},
        {R"(#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\nfile://%s/../hls.ts\n)", "upload.m3u8", ""},  // it goes on
        {R"(#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\nhttp://127.0.0.1:9/%s\n#EXT-X-ENDLIST\n)", "upload.m3u8", ""},
    };
    Run("cp $clip private.mkv; ff -i $clip -c:v mpeg4 -c:a aac private.mp4; ff -i private.mp4 -c copy ../hls.ts");
    for (const auto& [playlist, name, reads] : rows) {
        const std::string write = "printf '" + playlist + "' \"$PWD\" | tee upload.mp4 >" + name + "; ";
        EXPECT_EQ(Convert("upload.mp4 out.mp4", write).status, 2) << playlist;
        EXPECT_THAT(Convert(name + " out.mp4", write).err, HasSubstr("leads to other files")) << playlist;
        const Result followed = Run("datahelpers plan " + name + " --format mp4 --json --follow-references");
        EXPECT_EQ(followed.status, reads.empty() ? 2 : 0) << playlist << followed.err;
        EXPECT_THAT(followed.AsJson().value("references", Json()).dump(), HasSubstr(reads)) << playlist;
    }
}

TEST_F(Conversions, BeginOnlyWhenTheOutputCanBeWritten) {
    Run("cp $clip clip.mkv; cp $presets/mp4-h264-aac.json preset; ln clip.mkv same.mkv; mkdir directory; ln -s nowhere "
        "dangling");
    const std::string before = Run("ls -A").out;
    const Table<2> rows = {
        {"directory", "it is a directory"},
        {"absent/out.mp4", "the directory absent cannot be used"},
        {"clip.mkv/out", "clip.mkv is no directory"},
        {"same.mkv", "it is the input itself"},
        {"preset", "it is there already.\n  way out: --overwrite\n"},
        {"dangling", "it is a link that leads nowhere"},
        {"/dev/null", "it is no regular file"},
        {"''", "it has no name"},
        {"new/", "it has no name"},
        {"preset --preset preset", "it is the preset or plan itself"},
    };
    for (const auto& [output, says] : rows) {
        const Result result = Run("datahelpers convert clip.mkv " + output +
                                  (output.find("--") == std::string::npos ? " --format mp4" : ""));
        EXPECT_EQ(result.status, 2) << output;
        EXPECT_THAT(result.err, HasSubstr(says)) << output;
    }
    EXPECT_EQ(Run("ls -A").out, before);
}

TEST_F(Conversions, DoNotNeedStandardStreams) {
    EXPECT_EQ(Convert("$clip out.mp4", "exec <&-", ">&- 2>&-").status, 0);
    EXPECT_EQ(Run("ls -A; head -c 8 out.mp4 | tail -c 4").out, "out.mp4\nftyp");
}

TEST_F(Conversions, ReplaceAFileWhenTheyAreComplete) {
    const std::string old = "echo old >out.mp4; chmod 6640 out.mp4; ln -s out.mp4 link.mp4";
    EXPECT_EQ(Convert("$clip link.mp4", old).status, 0);
    EXPECT_EQ(Run("ls -A; readlink link.mp4; stat -c %a out.mp4; head -c 8 out.mp4 | tail -c 4").out,
              "link.mp4\nout.mp4\nout.mp4\n640\nftyp");
}

TEST_F(Conversions, LeaveTheOldFileWhenTheyFail) {
    const std::string full = "trap '' XFSZ; prlimit --pid $$ --fsize=";
    const std::string size =
        std::to_string(Convert("$clip whole.mp4", "", "--json").AsJson()["output"]["size"].get<int>() - 1);
    const std::string running = R"(fake 'echo half >"$output"; sleep 60 & echo $! >../pid; )";
    const Table<2> rows = {
        {full + "9999", "File too large"},
        {full + size, "File too large"},  // where ffmpeg may end as if all were well
        {R"(fake 'echo half >"$output"; echo no such thing >&2; exit 3')", "status 3.\n  no such thing"},
        {R"(fake 'echo half >"$output"')", "what ffmpeg wrote cannot be read: it is no media file"},
        {R"(fake ': >"$output"')", "ffmpeg wrote nothing"},
        {R"(ff -i $clip -map 0:a -t 0 -c:a pcm_s16le ../0.wav; fake 'cp ../0.wav "$output"')",
         "a file with nothing in it"},
        {R"(fake 'echo half >"$output"; kill -SEGV $$')", "it was ended by a signal: Segmentation fault"},
        {R"(ff -i $clip -an ../1.mkv; fake 'cp ../1.mkv "$output"')", "ffmpeg wrote 1 streams instead of 2"},
        {R"(ff -i $clip -map 0:v -map 0:v ../1.mkv; fake 'cp ../1.mkv "$output"')", "ffmpeg wrote no audio stream"},
        {running + "kill -INT $PPID; wait'", "Interrupted (Interrupt)"},
        {running + "kill -TERM $PPID; wait'", "Interrupted (Terminated)"},
        {running + "exec >&- 2>&-; kill -USR1 $PPID; wait'", "Interrupted (User defined signal 1)"},
        {running + "exit 4'", "it ended with status 4"},
        {"PATH=${program%/*}", "ffmpeg is not on the PATH"},
    };
    for (const auto& [before, says] : rows) {
        const Result result = Convert("$clip out.mp4", "rm -f *; printf old >out.mp4\n" + before, "--json");
        const int status = before.find("-INT") != std::string::npos    ? 130
                           : before.find("-TERM") != std::string::npos ? 143
                           : before.find("-USR1") != std::string::npos ? 138
                                                                       : 1;
        EXPECT_EQ(result.status, status) << before;
        EXPECT_EQ(result.AsJson()["status"], status) << before;
        EXPECT_THAT(result.err, HasSubstr(says)) << before;
        EXPECT_EQ(Run("ls -A; cat out.mp4; grep -sl 'State:.*sleeping' /proc/$(cat ../pid)/status").out, "out.mp4\nold")
            << before;
    }
}

// A shell with a terminal is what stops programs.
TEST_F(Conversions, StopAndGoOnWithTheirChild) {
    EXPECT_EQ(Run(R"(fake 'sleep 60 & echo $! >../pid; sleep 0.1; kill -TSTP $PPID; wait'
cat >job <<'END'
comes_to() {
    for try in $(seq 100); do grep -qs "State:.$1" /proc/$(cat ../pid)/status && break; sleep 0.1; done
    echo $1 $((try < 100))
}
datahelpers convert ../clip.mkv out.mp4 --format mp4 >/dev/null 2>&1 & program=$!
until [ -s ../pid ]; do sleep 0.1; done
{ comes_to T; kill -CONT $program; comes_to S; kill $program; wait $program; echo $?; } >said
END
script -qec 'bash -m ./job' /dev/null >log 2>&1; cat said)")
                  .out,
              "T 1\nS 1\n143\n");
}

TEST_F(Conversions, TellWhereTheFileIsNotAsPlanned) {
    const Result result = Convert(
        "$clip out", R"(fake 'echo x265 [info]: hm >&2; echo [a @ 0x1] [error] hm >&2; cp ../clip.mkv "$output"')",
        "--json $size/Width=160 $fps=25 $sound/SampleRate=48000 $sound/Layout=mono");
    Json output = result.AsJson()["output"];
    EXPECT_EQ(output["differences"].size(), 7U) << output;
    EXPECT_EQ(output["differences"][1], "Stream 0: the width is 322, not 160 as planned.");
    EXPECT_EQ(output["messages"], Json({"[a @ 0x1] hm"}));
}

TEST_F(Conversions, TellWhatADamagedInputGave) {
    Run("ff -f lavfi -i testsrc2=s=64x64:r=24:d=3 -c:v mpeg4 whole.mkv; head -c 9000 whole.mkv >half.mkv");
    const Result half = Run("datahelpers convert half.mkv half.mp4 --json");
    EXPECT_EQ(half.status, 1);
    EXPECT_EQ(half.AsJson()["status"], 1);
    EXPECT_THAT(half.AsJson()["output"].value("shortfall", ""), ::testing::MatchesRegex("0.[0-9] s of 3.0 s"));
    // Clocks of hundredths and thousandths of a second are no difference.
    for (const std::string options : {"mkv", "gif", "flv", "avi", "mp4 --start 2"}) {
        const Json output = Report("convert whole.mkv out." + options)["output"];
        EXPECT_EQ(output["shortfall"], Json()) << options;
        EXPECT_EQ(output["differences"], Json::array()) << options;
    }
}

TEST_F(Conversions, OfManyGoOnWhereTheyWere) {
    Run("mkdir in; for i in 1 2 3 4; do cp $clip in/$i.mkv; done; echo hm >in/bad.mkv");
    const std::string convert =
        "datahelpers convert --into out --format mkv --jobs 2 $vc/EncodeOptions/Preset=ultrafast ";
    EXPECT_EQ(
        Run(R"(fake 'echo half >"$output"; echo $$ >>../pids; exec sleep 60'; timeout --preserve-status -s INT 1 )" +
            convert + "in/*")
            .status,
        130);
    EXPECT_EQ(
        Run("find out -type f; for pid in $(cat ../pids); do grep -sl 'State:.*sleeping' /proc/$pid/status; done").out,
        "");
    const Result all = Run(convert + "in/*");
    EXPECT_EQ(all.status, 2);
    EXPECT_THAT(all.out, HasSubstr("! out/bad.mkv  Cannot read in/bad.mkv"));
    EXPECT_THAT(Run("touch -d '1 hour ago' in/*; rm out/3.mkv; " + convert + "in/?.mkv").out,
                HasSubstr("1 converted, 3 there already, 0 failed; "));
    EXPECT_EQ(Run("rm out/1.mkv; " + convert + "--json in/1.mkv in/2.mkv").AsJson()["files"][1]["skipped"], true);
    EXPECT_THAT(Run(convert + "in/1.mkv $clip 1.mkv").err, HasSubstr("Both in/1.mkv and 1.mkv would become 1.mkv"));
}

TEST_F(Conversions, AreOfPlansThatWereMadeBefore) {
    Run("datahelpers plan $clip --format mp4 --start 0.1 --json >plan; cp $clip copy.mkv; ff -i $clip -an other.mkv");
    EXPECT_EQ(Run("datahelpers convert --plan plan a.mp4 && datahelpers convert --plan plan copy.mkv b.mp4").status, 0);
    // Of eight; versions of FFmpeg differ on the first.
    EXPECT_THAT(Run("ffprobe -v error -count_frames -select_streams v -of csv=p=0 -show_entries stream=nb_read_frames "
                    "b.mp4")
                    .out,
                ::testing::MatchesRegex("[56]\n"));
    EXPECT_EQ(Run("datahelpers convert --plan plan other.mkv c.mp4").status, 3);
    EXPECT_EQ(Run("datahelpers convert --plan plan plan --overwrite").status, 2);
}

TEST_F(Conversions, InTwoPassesLeaveNoLogs) {
    for (const std::string codec : {"h264", "hevc"}) {
        const Result result = Convert("$clip out.mp4", "mkdir -p 'a:b=c'; export TMPDIR='a:b=c'",
                                      "$vc/Multipass=two-pass --video " + codec);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_THAT(result.err, HasSubstr("100 %  pass 2/2"));
        EXPECT_EQ(Run("find . | sort").out, ".\n./a:b=c\n./out.mp4\n");
    }
}

TEST_F(Conversions, ShowProgress) {
    const std::string sound = "ff -f lavfi -i anullsrc=r=8000:d=75 in.wav";
    EXPECT_THAT(Convert("in.wav out", sound).err, HasSubstr("100 %  1:15 of 1:15  "));
    EXPECT_EQ(Convert("in.wav out", sound, "--json").err, "");
    const std::string convert = "datahelpers convert in.wav out --overwrite --format wav";
    EXPECT_THAT(Run("script -qec '" + convert + R"(' /dev/null | tr '\r\033' '\n^')").out,
                HasSubstr("\n100 %  [##################################################]  1:15 of 1:15  "));
}

}  // namespace
}  // namespace ProgramTest
