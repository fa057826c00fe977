#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Kestro/Planner/FfmpegCommands.h"
#include "Kestro/Planner/Helpers.h"
#include "Kestro/Planner/MakePlan.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Text.h"

namespace Kestro::Planner {
namespace {

using Conf::StreamType;
using ::testing::HasSubstr;
using ::testing::Not;

/// A minute of 1080p without sound.
MediaInfo Film() {
    MediaStream video{.index = 0, .type = StreamType::Video, .codec = "ffv1", .width = 1920, .height = 1080};
    video.fps = 30;
    return {.path = "film.mkv", .demuxer = "matroska,webm", .duration = 60, .streams = {video}};
}

const std::string kVideo = "Streams/TypeId=video/VideoCodec/";

std::string LastCommand(const Preset& preset) {
    return Join(FfmpegCommands(MakePlan(Film(), preset), "out", {.workFolder = "p"}).back());
}

// No encoder is left to a bitrate that is the same at every size, and none ignores the one that is asked for.
TEST(RateControl, HeedsWhatIsAskedForAndNothingElse) {
    int encoders = 0;
    for (const std::string& codec : HelperNames(kVideoCodecs)) {
        SCOPED_TRACE(codec);
        Preset preset = Preset::OfContainer("matroska");
        preset.Choose(StreamType::Video, codec);
        try {
            EXPECT_THAT(LastCommand(preset), Not(HasSubstr("-b:0 2000000")));
            EXPECT_THAT(LastCommand(preset.Set(kVideo + "BitRate", "3000000")), HasSubstr("-b:0 3000000"));
            ++encoders;
        } catch (const NotAcceptable&) {
            // Of pictures, which Matroska does not store.
        }
    }
    EXPECT_GT(encoders, 7);
    EXPECT_THAT(LastCommand(Preset::OfContainer("mp4")), HasSubstr("-crf:0 22"));
    // Its players have one profile, without B-frames.
    EXPECT_THAT(LastCommand(Preset::OfContainer("mxf").Choose(StreamType::Video, "h264")), HasSubstr("-bf:0 0"));
    EXPECT_THAT(LastCommand(Preset::OfContainer("dvd")), HasSubstr("-maxrate:0"));
    EXPECT_THAT(LastCommand(Preset::OfContainer("mp4").Set(kVideo + "Quality", "100")), HasSubstr("-crf:0 1.000"));
}

}  // namespace
}  // namespace Kestro::Planner
