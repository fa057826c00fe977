#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Planner/FfmpegCommands.h"
#include "Kestro/Planner/Json.h"
#include "Kestro/Planner/MakePlan.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/SizeLimit.h"
#include "Kestro/Planner/Text.h"

namespace Kestro::Planner {
namespace {

using Conf::IFormatCodec;
using Conf::IFormatCodecVideo;
using Conf::StreamType;
using ::testing::HasSubstr;

MediaInfo Film(double seconds, int64_t width, int64_t height, int64_t fps) {
    MediaStream video{.index = 0, .type = StreamType::Video, .codec = "ffv1", .width = width, .height = height};
    video.fps = fps;
    MediaStream audio{.index = 1, .type = StreamType::Audio, .codec = "flac", .sampleRate = 48000, .layout = "stereo"};
    audio.sampleFormat = "s16";
    return {.path = "film.mkv", .demuxer = "matroska,webm", .duration = seconds, .streams = {video, audio}};
}

TEST(Sizes, AreReadAsPeopleWriteThem) {
    EXPECT_EQ(ParseSize("25M"), 25'000'000);
    EXPECT_EQ(ParseSize("1.5GB"), 1'500'000'000);
    EXPECT_EQ(ParseSize("800k"), 800'000);
    EXPECT_EQ(ParseSize("123"), 123);
    for (const char* wrong : {"", "M", "-1M", "0", "0.1", "25 M", "25MM", "1e9", "nan", "inf", "9999999G"}) {
        EXPECT_FALSE(ParseSize(wrong)) << wrong;
    }
}

int64_t VideoSetting(const Plan& plan, const std::string& tag) { return plan.CodecSettings(0)[tag].GetInt64(); }

TEST(Sizes, AreMetByBitrateThenByFrames) {
    const struct {
        const char* container;
        const char* size;
        MediaInfo film;
        int64_t width;
        int64_t height;
        int64_t fps;
    } rows[] = {
        {"mp4", "25M", Film(60, 1920, 1080, 25), 1920, 1080, 25},
        {"matroska", "8M", Film(60, 1920, 1080, 60), 960, 540, 30},
        {"mp4", "13M", Film(600, 1080, 1920, 60), 240, 426, 30},
        {"dvd", "25M", Film(60, 1920, 1080, 25), 720, 480, 29},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.container + std::string(row.size));
        const Plan plan = MakePlan(row.film, Preset::OfContainer(row.container).Set(Preset::KEY_SIZE, row.size));
        EXPECT_TRUE(IsTwoPass(plan));
        EXPECT_EQ(VideoSetting(plan, IFormatCodecVideo::TAG_WIDTH), row.width);
        EXPECT_EQ(VideoSetting(plan, IFormatCodecVideo::TAG_HEIGHT), row.height);
        EXPECT_EQ(VideoSetting(plan, IFormatCodecVideo::TAG_FPS), row.fps);
        double bits = 0;
        for (std::size_t i = 0; i < 2; ++i) {
            bits += plan.CodecSettings(i)[IFormatCodec::TAG_BITRATE].GetDouble() * *plan.input.duration;
        }
        EXPECT_LT(bits / 8, *plan.sizeLimit);
        EXPECT_GT(bits / 8, 0.85 * static_cast<double>(*plan.sizeLimit)) << "but for what the container takes";
        EXPECT_EQ(ToJson(PlanFromJson(ToJson(plan))), ToJson(plan));
        const std::string bitrate = std::to_string(VideoSetting(plan, IFormatCodec::TAG_BITRATE));
        EXPECT_THAT(Join(FfmpegCommands(plan, "out", {.workFolder = "p"}).back()), HasSubstr("-b:0 " + bitrate));
        const auto isBitrate = [&](const Choice& choice) { return choice.value == bitrate && !choice.reason.empty(); };
        EXPECT_TRUE(std::ranges::any_of(plan.choices, isBitrate)) << "it is told";
    }
    Preset asked = Preset::OfContainer("mp4").Set("Streams/TypeId=video/VideoResize/Resizer/Width", "1280");
    EXPECT_EQ(VideoSetting(MakePlan(Film(600, 1920, 1080, 30), asked.LimitSize(20'000'000)), "Width"), 1280);
}

TEST(Sizes, ThatCannotBeReachedAreRefusedWithTheSmallestThatCan) {
    const MediaInfo film = Film(100, 1920, 1080, 30);
    Preset preset = Preset::OfContainer("mp4").LimitSize(100'000);
    try {
        MakePlan(film, preset);
        FAIL() << "taken";
    } catch (const NotAcceptable& refused) {
        const Change smallest = refused.Problems().front().changes.at(0);
        EXPECT_NO_THROW(MakePlan(film, preset.Set(smallest.path, smallest.value)));
        EXPECT_THROW(MakePlan(film, preset.LimitSize(*ParseSize(smallest.value) * 95 / 100)), NotAcceptable);
    }
    MediaInfo endless = film;
    endless.duration.reset();
    EXPECT_THROW(MakePlan(endless, Preset::OfContainer("mp4").LimitSize(25'000'000)), NotAcceptable);
    EXPECT_THROW(MakePlan(film, Preset::OfContainer("gif").LimitSize(25'000'000)), NotAcceptable);
}

/// An encoder that writes so much more, or less, than it is asked for.
int64_t Written(const Plan& plan, double off) {
    const double video = plan.CodecSettings(0)[IFormatCodec::TAG_BITRATE].GetDouble() * off;
    const double audio = plan.CodecSettings(1)[IFormatCodec::TAG_BITRATE].GetDouble();
    return static_cast<int64_t>((video + audio) * *plan.input.duration / 8) + 30'000;
}

TEST(Sizes, AreMetByTheSecondTry) {
    for (const double off : {0.5, 0.9, 1.03, 1.2, 2.0}) {
        SCOPED_TRACE(off);
        Plan plan = MakePlan(Film(60, 1280, 720, 30), Preset::OfContainer("mp4").LimitSize(10'000'000));
        const auto corrected = CorrectedForSize(plan, Written(plan, off));
        ASSERT_TRUE(corrected);
        EXPECT_FALSE(CorrectedForSize(*corrected, Written(*corrected, off)));
        EXPECT_EQ(OtherBitrates(plan, *corrected).size(), 1U);
    }
}

}  // namespace
}  // namespace Kestro::Planner
