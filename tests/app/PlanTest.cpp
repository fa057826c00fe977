#include "tests/app/Program.h"

namespace ProgramTest {
namespace {

/// Beside $clip: slow.mkv has 2 frames a second, odd.mkv odd sides, old.mkv pixels of a television; turned.mov is shown
/// on its side; many.mkv has the streams video, video, audio (2.1), audio (7.1), subtitle.
const std::string kClips = R"(
    [ -e ../song.mp3 ] && exit; cd ..
    t='-f lavfi -i testsrc2=d=0.3' n='-f lavfi -i anullsrc=d=0.3'
    ff $t:r=2:s=64x48 -c:v ffv1 slow.mkv; ff -f lavfi -i testsrc=s=323x181:d=0.1 -c:v ffv1 odd.mkv
    ff $t:s=720x576 -vf setsar=16/11 -c:v ffv1 old.mkv; ff $t:s=322x180 -vf setsar=4/3 -c:v mpeg4 upright.mov
    ff -display_rotation 90 -i upright.mov -c copy turned.mov 2>&- ||
        ff -i upright.mov -c copy -metadata:s:v rotate=90 turned.mov
    printf '1\n00:00:00,000 --> 00:00:00,100\nText\n' >text.srt
    ff $t:s=64x64 $t:s=32x32 $n:cl=2.1 $n:cl=7.1 -i text.srt -map 0 -map 1 -map 2 -map 3 -map 4 -c:v ffv1 \
        -c:a pcm_s16le many.mkv; ff -i many.mkv -map 0:3 -c copy surround.mkv; ff -i clip.mkv -vn sound.wav
    ff -i sound.wav -i many.mkv -map 0 -map 1:0 -ac 2 -c:v png -disposition:v attached_pic song.mp3
    m='{"Format": {"Container": "matroska"}, "Streams": [{"TypeId":'
    echo "$m \"audio\"}, {\"TypeId\": \"video\"}, {\"TypeId\": \"audio\"}, {\"TypeId\": \"audio\"}]}" >streams.json
    echo "$m \"video\"}, {\"TypeId\": \"video\"}]}" >two.json; echo "$m \"video\"}]}" >video.json
)";

class Plans : public Shell {
protected:
    static std::string Plan(const std::string& arguments) {
        return (arguments.starts_with("--") ? "plan " : "plan --format ") + arguments;
    }
};

TEST_F(Plans, CorrectWhatIsNotAccepted) {
    Run(kClips);
    const std::string ofDvd = "audio/SampleRate=48000 audio/Layout=stereo ";
    const std::string ofNtsc = "video/Width=352 video/Height=240 video/Fps=30000/1001 ";
    const Table<2> rows = {
        {"mp4 $clip", ""},
        {"--preset $presets/mp4-h264-aac.json $clip $ac/BitRate=100000", "audio/BitRate=96000 "},
        {"mp4 $clip $sound/SampleRate=44000 $fps=7", "video/Fps=8/1 audio/SampleRate=44100 "},
        {"mp4 $clip $sound/SampleRate=95000 $fps=23",
         "video/Fps=24000/1001 audio/SampleRate=96000 "},  // as in the input
        {"dvd $clip $fps=25", ofNtsc + ofDvd},
        {"mp4 $clip --audio mp3", ofDvd},
        {"mp4 $clip --audio mp3 $sound/SampleRate=auto", "audio/Layout=stereo "},  // it was left open
        {"avi $clip --audio aac", "audio/Layout=stereo "},
        {"dvd $clip", ofNtsc + ofDvd},
        {"dvd $clip --video mpeg1video", ofNtsc + ofDvd},
        {"dvd $clip --set Format/DvdStandard=pal", "video/Width=352 video/Height=288 video/Fps=25/1 " + ofDvd},
        {"mka $clip --audio dts $sound/SampleRate=48000", "audio/Layout=5.1(side) audio/BitRate=669001 "},
        {"mka ../many.mkv --audio dts $ac/BitRate=1000000", "audio/Layout=stereo audio/Layout=5.1(side) "},
        {"mka ../surround.mkv --audio dts $ac/BitRate=1000000", "audio/Layout=5.1(side) "},
        {"mka $clip $sound/SampleFmt=fltp", ""},
        {"mxf $clip $sound/Layout=stereo --video h264 $vc/EncodeOptions/Profile=high",
         "video/Profile=baseline audio/SampleRate=48000 "},
        {"3gp $clip $sound/Layout=mono", "video/Width=352 video/Height=288 "},
        {"mp4 $clip $size/Width=161", "video/Width=160 "},
        {"mp4 ../odd.mkv", "video/Width=322 video/Height=180 "},
        {"gif ../slow.mkv", ""},  // its list names the source's own rate
        {"gif ../slow.mkv $vc/Fps=3", "video/Fps=2/1 "},
    };
    for (const auto& [arguments, corrected] : rows) {
        std::string found;
        Json plan = Report(Plan(arguments));
        for (Json& correction : plan["corrections"]) {
            const std::string path = correction["path"];
            EXPECT_NE(correction["before"], correction["after"]) << path;
            EXPECT_NE(correction["reason"], "") << path;
            Json& after = correction["after"];
            found += path.substr(15, 5) + path.substr(path.rfind('/')) + "=";
            found += (after.is_string() ? after.get<std::string>() : after.dump()) + " ";
        }
        EXPECT_EQ(found, corrected) << arguments;
    }
}

TEST_F(Plans, TellWhatIsMadeOfEveryStream) {
    Run(kClips);
    const Table<2> rows = {
        {"mp4 $clip", "Chosen\n Streams/TypeId=video/VideoCodec/CodecId = h264\n the default of mp4\n"},
        {"mp4 $clip", "Resampler/SampleFmt = fltp\n the samples that FFmpeg's encoder aac takes\nNo corrections\n"},
        {"mp4 $clip $ac/BitRate=100000", "\n Streams/TypeId=audio/AudioCodec/BitRate: 100000 -> 96000\n"},
        {"mp4 $clip --video hevc", "VideoCodec/CodecId = hevc\n asked for by --video\n"},
        {"mp4 $clip $size/Width=160", "FrameSizeMode = custom\n a width or height is given\n"},
        {"mp4 $clip $size/Width=160", "Resizer/Height = 90\n keeps the picture's shape\n"},
        {"mp4 $clip $size/Height=90 $size/Width=0", "Resizer/Width = 160\n keeps the picture's shape\n"},
        {"mp4 $clip $vc/RateControl=cbr_auto", "BitRate = 238935\n the usual one for 322 x 180 at 24000/1001 "},
        {"mp4 $clip $sound/SampleRate=auto", "SampleRate = 96000\n auto: the input has 96000\n"},
        {"mp4 $clip $ac/CodecId=auto", "AudioCodec/CodecId = aac\n auto: the default of mp4\n"},
        {"mp4 $clip $ac/RateControl=auto", " = cbr\n auto: constant, and the bitrate is left to the program\n"},
        {"matroska $clip --audio mp3 $sound/SampleRate=auto",
         "SampleRate = 48000\n auto: nearest to the input's 96000 that mp3 takes\n"},
        {"flv $clip --audio mp3 $sound/SampleRate=auto",
         "SampleRate = 44100\n auto: nearest to the input's 96000 that the container flv and mp3 take\n"},
        {"mka $clip --audio dts $sound/Layout=auto $ac/RateControl=auto",
         "Layout = 5.1(side)\n auto: nearest to the input's 5.1 that FFmpeg's encoder dca takes\n"},
        {"matroska $clip --audio alac $ac/RateControl=auto", " = vbr\n auto: RateControl of alac must be vbr.\n"},
        {"dvd $clip $fps=auto", "/1001\n auto: nearest to the input's 24000/1001 that dvd ntsc takes\n"},
        {"mp4 $clip $vc/Fps=25 $fps=auto", "Fps = 25/1\n auto: what the stream's other settings ask for\n"},
        {"--preset ../streams.json ../many.mkv",
         "\n audio aac from stream 2, 44100 Hz, 3.0, 256 kbit/s, encoder aac, global header\n video h264 from stream "
         "0, 64 x "
         "64, 25 frames/s, quality 58 of 100, encoder libx264, global header\n audio aac from stream 3, "},
        {"--preset ../streams.json ../many.mkv", "Streams/TypeId=audio/AudioResample/Resampler/Layout: 2.1 -> 3.0\n"},
        {"--preset ../streams.json ../many.mkv",
         "Notes\n Streams/3 is dropped: the input has no audio for it.\n Stream 1 of the input (video, ffv1) is left "
         "out: the container matroska takes 1 video stream.\n"},
        {"mp4 ../many.mkv", "\n subtitle mov_text from stream 4, encoder mov_text\n"},
        {"mp4 ../many.mkv --subtitles none",
         "Stream 4 of the input (subtitles, ass) is left out: other tracks are asked for.\n"},
        {"avi ../many.mkv",
         "Stream 4 of the input (subtitles, ass) is left out: the container avi takes no subtitles "},
        {"srt ../many.mkv",
         "Output\n srt, FFmpeg's muxer srt, no global header\n subtitle srt from stream 4, encoder "},
        {"mka ../many.mkv --audio-tracks 2",
         "global header\n audio aac from stream 3, 44100 Hz, 7.1, 256 kbit/s, encoder aac"},
        {"mp3 ../many.mkv",
         "Stream 3 of the input (audio, pcm_s16le) is left out: the container mp3 takes 1 audio stream.\n"},
        {"mp4 ../song.mp3",
         "\n audio mp3 from stream 0, 48000 Hz, stereo, copied\n cover png from stream 1, 64 x 64, copied\n"},
        {"mp4 ../song.mp3 --audio aac", "\n audio aac from stream 0, 48000 Hz, stereo, 256 kbit/s, encoder aac"},
        {"mp4 ../song.mp3 $ac/CodecId=auto $sound/SampleRate=48000",
         "\n audio aac from stream 0, 48000 Hz, stereo, 256 kbit/s, encoder aac"},
        {"mp4 ../song.mp3", "AudioCodec/CodecId = copy\n the container mp4 takes it as it is in the input\n"},
        {"matroska ../song.mp3", "\n cover png from stream 1, 64 x 64, copied\n"},
        {"wav ../song.mp3", "Stream 1 of the input (cover picture, png) is left out: the container wav takes "},
        {"mp4 $clip --set Format/Container=mov", "Output\n mov, FFmpeg's muxer mov, global header\n"},
        {"--preset ../two.json $clip", " Streams/1 is dropped: the input has no video for it.\n"},
        {"MKV $clip --video H.265 --audio libvorbis",
         " quality 49 of 100, encoder libx265, global header\n audio vorbis "},
        {"bmp $clip", " holds one picture; it is the first of the input, unless a sequence is asked for.\n"},
        {"ipod $clip --audio mp3",
         " audio mp3 from stream 1, 48000 Hz, stereo, 256 kbit/s, encoder libmp3lame, NOT supported by the muxer\n"},
        {"mp4 ../turned.mov", " 0 video mpeg4, 180 x 322 pixels of 3/4, 25 frames/s\n"},
        {"mp4 ../turned.mov", " Width 180\n Height 322\n AspectX 3\n AspectY 4\n"},
        {"mp4 ../old.mkv $size/Width=640", " Width 640\n Height 352\n AspectX 1\n AspectY 1\n"},
        {"mp4 ../old.mkv $size/Width=640 $size/Fit=up_to", " Width 640\n Height 512\n AspectX 16\n AspectY 11\n"},
        {"mp4 $clip $size/FrameSizeMode=half", " FrameSizeMode half\n Width 160\n Height 90\n"},
        // A DVD of a wide picture is 16:9, every other disc 4:3.
        {"dvd $clip", " AspectX 40\n AspectY 33\n"},
        {"dvd ../many.mkv", " AspectX 10\n AspectY 11\n"},
        {"vcd $clip", " AspectX 10\n AspectY 11\n"},
        {"gif ../slow.mkv", " Fps 2/1\n"},
    };
    for (const auto& [arguments, says] : rows) {
        EXPECT_THAT(RunOnce("datahelpers " + Plan(arguments) + " --full | tr -s ' '").out, HasSubstr(says))
            << arguments;
    }
    EXPECT_EQ(Run("datahelpers plan ../sound.wav --preset ../video.json").status, 3);
    EXPECT_THAT(Run("datahelpers plan ../many.mkv --preset ../two.json --set Format/Limits/MaxVideo=9").err,
                HasSubstr("Too many video streams"));
    for (const std::string input : {"absent", "..", "../text.srt/", "/dev/null", "''", "../video.json"}) {
        EXPECT_EQ(Run("datahelpers plan --format mp4 -- " + input).status, 2) << input;
    }
}

TEST_F(Plans, GiveCommandsThatAShellRuns) {
    EXPECT_EQ(Run(R"(name=$(printf "it's \\033.mkv"); cp $clip "$name"
        datahelpers plan "$name" 'a b.mkv' --commands --start 0:00.1 --duration 0.1 $vc/Multipass=two-pass >commands
        bash -e ./commands >log 2>&1 && ffprobe -v error -count_frames -select_streams v -of csv=p=0 \
            -show_entries stream=nb_read_frames 'a b.mkv')")
                  .out,
              "3\n");
    const Table<2> rows = {{"--start 1:99", "is no time"},
                           {"--start x", "is no time"},
                           {"--duration -1", "is no time"},
                           {"--start 9", "it ends at 0:00"},
                           {"--commands", "for an output"}};
    for (const auto& [option, says] : rows) {
        EXPECT_THAT(Run("datahelpers plan $clip --format mp4 " + option).err, HasSubstr(says)) << option;
    }
}

TEST_F(Plans, OfEveryPresetNeedNoCorrection) {
    EXPECT_EQ(Run(R"(for preset in $presets/*.json; do
        datahelpers plan $clip --preset $preset | grep -E '^(No c|C)orrections|^Notes|NOT supported' || echo $preset
        done | sort -u)")
                  .out,
              "No corrections\n");
}

// Each generation of codecs takes fewer bits for the same picture, or as many.
TEST_F(Plans, GiveEveryCodecItsUsualBitrate) {
    const Result result = Run(R"(for codec in av1 vp9 hevc h264 mpeg4 mpeg2video mjpeg; do
        datahelpers plan $clip --format matroska $vc/RateControl=auto --video $codec | sed -n '/BitRate = /s/.*= //p'
        done | tee bitrates | sort -nc && wc -l <bitrates)");
    EXPECT_EQ(result.out, "7\n") << result.err;
}

// What is suggested is accepted: a user who follows it gets on.
TEST_F(Plans, RefuseWhatCannotBeUsedAndNameAWayOut) {
    const std::string preset = "--preset $presets/mp4-h264-aac.json ";
    const Table<3> rows = {
        {"--format mp5", "", ""},
        {"--format mp4 --video divvx", "", ""},
        {"--format wav --audio aac", "$ac/CodecId", "take one of these"},
        {preset + "--audio mp3", "$ac/CodecId", "leave out --audio"},
        {"--format mp4 --video copy", "$vc/CodecId", "another container"},
        {preset + "--audio-tracks 2", "$a/Tracks", ""},
        {preset + "$sound/SampleRate=441", "$sound/SampleRate", "=-1"},
        {preset + "$ac/BitRate=128", "$ac/BitRate", "=32000"},
        {preset + "$sound/SampleFmt=s16", "$sound/SampleFmt", "=fltp"},
        {"--format mp4 $ac/EncodeOptions/Profile=aac_he", "$ac/EncodeOptions/Profile", "=aac_low"},
        {preset + "$vc/EncodeOptions/Profile=low", "$vc/EncodeOptions/Profile", "=baseline"},
        {"--format mp4 $vc/EncodeOptions/Tune=x", "$vc/EncodeOptions/Tune", "=film"},
        {preset + "$vc/RateControl=abr", "$vc/RateControl", "=cbr"},
        {preset + "$vc/RateControl=vbr", "$vc/Quality", "=50"},
        {"--format matroska $vc/Fps=1/1000000007", "$vc/Fps", "=25/1"},
        {"--format avi $vc/Fps=90000", "$vc/Fps", "=25/1"},
        {preset + "$vc/BitRate=2500", "$vc/BitRate", "=100000"},
        {"--format mp4 --size 5k", "--set Size", "=11000"},
        {"--format dvd $size/Width=100", "$size/FrameSizeMode", "Resizer/Height=480"},
        {preset + "$size/FrameSizeMode=auto", "$size/FrameSizeMode", "=original"},
        {"--format mp4 $size/TypeId=x", "$size/TypeId", "=default"},
        {preset + "$a/AudioVolume/VolumePercent=201", "$a/AudioVolume/VolumePercent", "=200"},
    };
    for (const auto& [arguments, path, wayOut] : rows) {
        const Result result = Run("datahelpers plan $clip --json " + arguments);
        EXPECT_EQ(result.status, 3) << arguments;
        EXPECT_THAT(result.err, ::testing::StartsWith("datahelpers: ")) << arguments;
        const Json error = result.AsJson().at("error");
        EXPECT_EQ(error.value("path", ""), Run("echo " + path + " | sed 's/--set //' | tr -d '\\n'").out) << arguments;
        EXPECT_FALSE(error.value("allowed", Json()).empty()) << arguments;
        const std::string way = error.value("wayOut", "");
        EXPECT_THAT(way, HasSubstr(wayOut)) << arguments;
        if (way.starts_with("--set ")) Report("plan $clip " + arguments + " " + way);
    }
}

}  // namespace
}  // namespace ProgramTest
