#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "Kestro/Planner/FfmpegCommands.h"
#include "Kestro/Planner/MakePlan.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Text.h"

namespace Kestro::Planner {
namespace {

using Conf::StreamType;
using ::testing::HasSubstr;

MediaStream Sound(int index, const std::string& language, bool isDefault) {
    MediaStream audio{.index = index, .type = StreamType::Audio, .codec = "pcm_f32be"};
    audio.sampleRate = 48'000;
    audio.layout = "stereo";
    audio.sampleFormat = "flt";
    audio.language = language;
    audio.isDefault = isDefault;
    return audio;
}

/// 576 lines, two tracks of sound of which the second is the usual one, a font and chapters.
MediaInfo Film() {
    MediaStream video{.index = 0, .type = StreamType::Video, .codec = "ffv1"};
    video.width = 720;
    video.height = 576;
    video.fps = 25;
    video.bitDepth = 8;
    MediaStream font{.index = 3, .type = {}, .codec = "ttf"};
    font.isAttachment = true;
    return {.path = "film.mkv",
            .demuxer = "matroska",
            .duration = 60.0,
            .chapters = 2,
            .streams = {video, Sound(1, "eng", false), Sound(2, "fre", true), font}};
}

void MakeHdr(MediaInfo& film) {
    MediaStream& video = film.streams.front();
    video.bitDepth = 10;
    video.colour = {.primaries = "bt2020", .transfer = "smpte2084", .matrix = "bt2020nc", .range = "tv"};
    video.mastering = {.chromaticities = {1, 2, 3, 4, 5, 6, 7, 8},
                       .maxLuminance = 9,
                       .minLuminance = 10,
                       .maxContentLight = 11,
                       .maxAverageLight = 12};
}
void MakeInterlaced(MediaInfo& film) { film.streams.front().isInterlaced = true; }
void MakeTurned(MediaInfo& film) {
    film.streams.front().codec = "h264";
    film.streams.front().rotation = 90;
}
void MakeOdd(MediaInfo& film) {
    film.streams.front().width = 719;
    film.streams.front().height = 575;
}
void MakeDeepSound(MediaInfo& film) { film.streams[2].bitDepth = 24; }
void MakeTransparent(MediaInfo& film) { film.streams.front().hasAlpha = true; }

// What a film has that not every output can have: kept where it can be, and told where not.
TEST(Films, KeepWhatTheOutputCanHave) {
    const std::function<void(MediaInfo&)> asItIs = [](MediaInfo&) {};
    const struct {
        std::function<void(MediaInfo&)> change;
        std::string container;
        std::string video;
        std::string does;     ///< in a command line
        std::string doesNot;  ///< likewise
        std::string says;     ///< in the notes
    } rows[] = {
        {MakeHdr, "mp4", "hevc", "-pix_fmt:0 yuv420p10le", "tonemap", ""},
        {MakeHdr, "mp4", "hevc", "master-display=G(1,2)B(3,4)R(5,6)WP(7,8)L(9,10):max-cll=11,12", "-profile:0", ""},
        {MakeHdr, "webm", "vp9", "-pix_fmt:0 yuv420p10le", "tonemap", ""},
        {MakeHdr, "mp4", "h264", "zscale=tin=smpte2084", "master-display", "brought to that of BT.709"},
        {MakeHdr, "mp4", "h264", "-pix_fmt:0 yuv420p ", "10le", "10 bits of each colour become 8"},
        {MakeInterlaced, "mp4", "h264", "bwdif=mode=send_frame", "+ildct", "become whole frames"},
        {MakeInterlaced, "dvd-pal", "mpeg2video", "-flags:0 +ildct+ilme", "bwdif", "and so is the output"},
        {MakeTurned, "mp4", "auto", "-c:0 copy", "libx264", ""},
        {MakeTurned, "matroska", "auto", "-c:0 libx264", "-c:0 copy", ""},
        {MakeTransparent, "webm", "vp8", "-auto-alt-ref:0 0", "", ""},
        {MakeTransparent, "mp4", "h264", "-c:0 libx264", "auto-alt-ref", "transparency of the input is lost"},
        {asItIs, "avi", "mpeg4", "aresample=async=1:first_pts=0", "", "2 chapters are left out"},
        {asItIs, "mp4", "h264", "-map 0:1 -c:1 aac", "async", "Stream 3 of the input (attached file, ttf) is left out"},
        {asItIs, "matroska", "h264", "-map 0:3 -c:t copy", "async", ""},
        {MakeOdd, "webm", "vp9", "-c:0 libvpx-vp9", "scale=", ""},
        {MakeOdd, "gif", "gif", "-c:0 gif", "scale=", ""},
        {MakeOdd, "mp4", "h264", "scale=w=718:h=574", "", ""},
        {MakeDeepSound, "wav", "", "-c:0 pcm_s16le", "", "24 bits of each sample become 16"},
        {MakeDeepSound, "mp3", "", "-c:0 libmp3lame", "24 bits", ""},
        {asItIs, "mov", "h264", "-metadata:s:2 language=fra", "language=eng", ""},
        {asItIs, "svcd", "mpeg2video", "-b:0 2040000", "", ""},
        {asItIs, "mp3", "", "-map 0:2 -c:0 libmp3lame", "0:1", "takes 1 audio stream"},
        {asItIs, "mp3", "", "-c:0", "", "The languages of the streams are left out"},
    };
    for (const auto& [change, container, video, does, doesNot, says] : rows) {
        SCOPED_TRACE(container + " " + video + " " + does);
        MediaInfo film = Film();
        change(film);
        Preset preset = Preset::OfContainer(container.substr(0, container.find('-')));
        if (container == "dvd-pal") {
            preset.Set("Format/DvdStandard", "pal");
            preset.Set("Streams/TypeId=video/VideoResize/Resizer/FrameSizeMode", "original");
        }
        if (!video.empty()) preset.Choose(StreamType::Video, video);
        const Plan plan = MakePlan(film, preset);
        const std::string command = Join(FfmpegCommands(plan, "out").back());
        EXPECT_THAT(command, HasSubstr(does));
        EXPECT_TRUE(doesNot.empty() || command.find(doesNot) == std::string::npos) << command;
        EXPECT_THAT(Join(plan.notes), HasSubstr(says));
    }
}

TEST(Films, AreHeldToTheTracksThatAreChosen) {
    const struct {
        std::string tracks;
        std::string maps;
    } rows[] = {{"all", "-map 0:1 -c:0 aac|-map 0:2 -c:1 aac"},
                {"2", "-map 0:2 -c:0 aac"},
                {"eng", "-map 0:1 -c:0 aac"},
                {"fre,1", "-map 0:1 -c:0 aac|-map 0:2 -c:1 aac"},
                {"3", ""},
                {"ger", ""},
                {"", "-map 0:1 -c:0 aac|-map 0:2 -c:1 aac"}};
    for (const auto& [tracks, maps] : rows) {
        SCOPED_TRACE(tracks);
        Preset preset = Preset::OfContainer("mka");
        if (!tracks.empty()) preset.ChooseTracks(StreamType::Audio, tracks);
        std::string found;
        try {
            const Command command = FfmpegCommands(MakePlan(Film(), preset), "out").back();
            for (std::size_t i = 0; i + 3 < command.size(); ++i) {
                if (command[i] != "-map" || command[i + 1] == "0:3") continue;
                found += (found.empty() ? "" : "|") + Join(std::vector(command.begin() + static_cast<long>(i),
                                                                       command.begin() + static_cast<long>(i) + 4));
            }
        } catch (const NotAcceptable& refused) {
            EXPECT_EQ(refused.Problems().front().code, ProblemCode::NoSuchStream);
        }
        EXPECT_EQ(found, maps);
    }
}

}  // namespace
}  // namespace Kestro::Planner
