#include "tests/app/Program.h"

namespace ProgramTest {
namespace {

class Arguments : public Shell {};

// Of an ffmpeg that writes down what it is told, and fails in its last pass.
TEST_F(Arguments, SayWhatThePlanSays) {
    const std::string bits = " -b:0 2000000 -maxrate:0 2000000 -bufsize:0 ";
    const std::string narrow = "mp4 $size/Width=200 $size/Height=180 $size/Fit=";
    const std::string flat = "mp4 $size/Width=322 $size/Height=100 $size/Fit=";
    const std::string best = " $vc/RateControl=vbr $vc/Quality=100";
    const Table<2> rows = {
        {"mp4", " -map 0:0 -c:0 libx264 -crf:0 22.212 -preset:0 faster -tune:0 film -profile:0 main "},
        {"mp4 $vc/BitRate=2000000", bits + "4000000 -preset:0 faster "},
        {"mp4", " -pix_fmt:0 yuv420p -g:0 250 -bf:0 3 -flags:0 +global_header -map 0:1 -c:1 aac -filter:1 aformat="},
        {"mp4", " -b:1 256000 -profile:1 aac_low -flags:1 +global_header -disposition:0 +default -f mp4 file:./."},
        {"mp4 --set Format/GlobalHeader=false", " -bf:0 3 -map 0:1 "},
        {"mp4 --set Format/Progressive=true --set Format/PspMode=true", " -movflags +faststart -f psp file:"},
        {narrow + "crop", " -filter:0 scale=w=322:h=180:flags=bicubic,crop=w=200:h=180,setsar=1/1 -crf:0 "},
        {flat + "crop", " scale=w=322:h=180:flags=bicubic,crop=w=322:h=100,setsar="},
        {narrow + "letterbox", " scale=w=200:h=112:flags=bicubic,pad=w=200:h=180:x=(ow-iw)/2:y=(oh-ih)/2,setsar="},
        {flat + "auto", " scale=w=178:h=100:flags=bicubic,pad=w=322:h=100:x=(ow-iw)/2:y=(oh-ih)/2,setsar="},
        {narrow + "smart_fit", " crop=w=290:h=180,scale=w=200:h=180:flags=bicubic,setsar="},
        {flat + "smart_fit", " crop=w=322:h=162,scale=w=322:h=100:flags=bicubic,setsar="},
        {narrow + "stretch $size/Scaler=neighbor", " -filter:0 scale=w=200:h=180:flags=neighbor,setsar="},
        {narrow + "up_to $fps=25", " scale=w=200:h=112:flags=bicubic,setsar=1/1,fps=25/1 "},
        {"mp4 $size/Width=320 $size/Height=180", " -filter:0 scale=w=320:h=180:flags=bicubic,setsar="},
        {"matroska $a/AudioVolume/VolumePercent=50 $sound/SampleRate=48000 $a/AudioPackets/PacketDuration=100000",
         "volume=0.500,aresample=48000,aformat=sample_rates=48000:channel_layouts=5.1:sample_fmts=fltp,asetnsamples=n="
         "4800:p="},
        {"mp4 $vc/UseAllCores=true $vc/KeyInterval=7 $vc/MaxBFrames=3", " -g:0 7 -bf:0 3 -threads:0 0 "},
        {"mp4 $vc/Threads=3 $vc/EncodeOptions/Profile=high10",
         " -profile:0 high10 -pix_fmt:0 yuv420p10le -g:0 250 -bf:0 3 -threads:0 3 "},
        {"mp4 $vc/EncodeOptions/Profile=high422", " -pix_fmt:0 yuv422p "},
        {"mp4 $vc/EncodeOptions/Profile=high444", " -pix_fmt:0 yuv444p "},
        {"mka --audio dts", " -c:0 dca -strict:0 experimental -filter:0 "},
        {"mp4 $ac/EncodeOptions/Profile=aac_ltp", " -c:1 aac -strict:1 experimental -filter:1 "},
        {"mp4" + best, " -c:0 libx264 -crf:0 1.000 -preset:0 "},
        {"mp4" + best + " $vc/EncodeOptions/ApprovedVbrOnly=true", " -c:0 libx264 -b:0 955740 -pix_fmt:0 "},
        {"webm --video vp9" + best, " -c:0 libvpx-vp9 -crf:0 4 -b:0 0 -pix_fmt:0 yuv420p "},
        {"matroska --video dvvideo $size/Width=720 $size/Height=480 $vc/BitRate=2000000",
         "=32/27,fps=30000/1001" + bits + "4000000 -pix_fmt:0 yuv411p "},
        {"matroska --video dvvideo $size/Width=720 $size/Height=576 $fps=25", " -pix_fmt:0 yuv420p "},
        {"dvd $vc/BitRate=2000000", "=40/33,fps=30000/1001" + bits + "1835008 -pix_fmt:0 yuv420p -g:0 15 -bf:0 2 "},
        {"vcd $vc/BitRate=2000000",
         ",pad=w=352:h=240:x=(ow-iw)/2:y=(oh-ih)/2,setsar=10/11,fps=30000/1001" + bits + "327680 "},
        {"bmp", " -c:0 bmp" + bits + "4000000 -frames:v 1 -update 1 -f image2 file:./."},
        {"mp4 $vc/Multipass=two-pass", " -pass:0 1 -passlogfile:0 /pass -f mp4 -y /dev/null "},
        {"mp4 $vc/Multipass=two-pass", " -pass:0 2 -passlogfile:0 /pass -map 0:1 "},
        {"mp4 --video hevc $vc/Multipass=two-pass", " -x265-params:0 pass=2:stats=/pass -map 0:1 "},
    };
    for (const auto& [arguments, said] : rows) {
        const Result& result =
            RunOnce(R"(fake 'printf "%s " "$@" >>args; [ "$output" = /dev/null ]'; : >args; export TMPDIR=$PWD
            datahelpers convert $clip out --format )" +
                    arguments + R"(
            status=$?; sed 's|/[^ ]*/pass|/pass|g' args; exit $status)");
        EXPECT_EQ(result.status, 1) << arguments << "\n" << result.err;
        EXPECT_THAT(result.out, HasSubstr(said)) << arguments;
    }
}

}  // namespace
}  // namespace ProgramTest
