#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <limits>
#include <string>

#include "Kestro/Conf/CodecKinds.h"
#include "Kestro/Conf/GetDefaultVideoBitrate.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {
namespace {

constexpr int kNoQuality = -1;

// YouTube Help, "Recommended upload encoding settings", SDR: the published rate, or the middle of the published range.
TEST(DefaultVideoBitrate, IsNearWhatVideoPlatformsAskFor) {
    const struct {
        int64_t width, height;
        double mbitAt30, mbitAt60;
    } published[] = {{640, 360, 1, 1.5},  {854, 480, 2.5, 4},   {1280, 720, 5, 7.5},
                     {1920, 1080, 8, 12}, {2560, 1440, 16, 24}, {3840, 2160, 40, 60.5}};
    for (const auto& row : published) {
        for (const auto& [fps, mbit] : {std::pair(30.0, row.mbitAt30), {60.0, row.mbitAt60}}) {
            const int64_t bitrate =
                GetDefaultVideoBitrate(IFormatCodecVideo::CODEC_ID_H264, row.width, row.height, fps, kNoQuality);
            const double ratio = static_cast<double>(bitrate) / (mbit * 1e6);
            EXPECT_LT(std::max(ratio, 1 / ratio), 1.5) << row.height << "p at " << fps;
        }
    }
}

TEST(DefaultVideoBitrate, GrowsWithEveryArgument) {
    for (const std::string& codec : VideoCodecIds()) {
        int64_t previous = 0;
        const auto grows = [&](int64_t width, int64_t height, double fps, int quality) {
            const int64_t bitrate = GetDefaultVideoBitrate(codec, width, height, fps, quality);
            EXPECT_GE(bitrate, previous) << codec << ' ' << width << 'x' << height << ' ' << fps << ' ' << quality;
            previous = bitrate;
        };
        for (int64_t width = 2; width <= 8192; width *= 2) grows(width, 480, 25, 1);
        for (int64_t height = 480; height <= 4320; height += 480) grows(8192, height, 25, 1);
        for (int fps = 25; fps <= 240; fps += 5) grows(8192, 4320, fps, 1);
        for (int quality = 1; quality <= IFormatCodec::MAX_QUALITY; ++quality) grows(8192, 4320, 240, quality);
    }
}

TEST(DefaultVideoBitrate, QualityScalesItAroundTheMiddle) {
    const auto bitrate = [](int quality) {
        return static_cast<double>(GetDefaultVideoBitrate(IFormatCodecVideo::CODEC_ID_H264, 1920, 1080, 25, quality));
    };
    EXPECT_EQ(bitrate(kNoQuality), bitrate(50));
    EXPECT_EQ(bitrate(0), bitrate(50));
    EXPECT_EQ(bitrate(INT_MIN), bitrate(50));
    EXPECT_EQ(bitrate(INT_MAX), bitrate(100));
    EXPECT_NEAR(bitrate(75) / bitrate(50), 2, 1e-6);
    EXPECT_NEAR(bitrate(50) / bitrate(25), 2, 1e-6);
}

TEST(DefaultVideoBitrate, OlderCodecsNeedMore) {
    int64_t previous = 0;
    for (const std::string& codec :
         {IFormatCodecVideo::CODEC_ID_AV1, IFormatCodecVideo::CODEC_ID_H265, IFormatCodecVideo::CODEC_ID_H264,
          IFormatCodecVideo::CODEC_ID_MPEG4, IFormatCodecVideo::CODEC_ID_MPEG2VIDEO, IFormatCodecVideo::CODEC_ID_MJPEG,
          IFormatCodecVideo::CODEC_ID_PRORES, IFormatCodecVideo::CODEC_ID_UTVIDEO}) {
        const int64_t bitrate = GetDefaultVideoBitrate(codec, 1280, 720, 30, kNoQuality);
        EXPECT_GT(bitrate, previous) << codec;
        previous = bitrate;
    }
    EXPECT_EQ(GetDefaultVideoBitrate("no codec", 1280, 720, 30, kNoQuality),
              GetDefaultVideoBitrate(IFormatCodecVideo::CODEC_ID_H264, 1280, 720, 30, kNoQuality));
}

TEST(DefaultVideoBitrate, StaysInRangeWhateverIsAsked) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr int64_t kSides[] = {INT64_MIN, -1, 0, 1, 1080, INT64_MAX};
    constexpr double kRates[] = {-kInfinity, -1,    0,         std::numeric_limits<double>::denorm_min(),
                                 25,         1e308, kInfinity, kNaN};
    for (const std::string& codec : {IFormatCodecVideo::CODEC_ID_H264, IFormatCodecVideo::CODEC_ID_AV1,
                                     IFormatCodecVideo::CODEC_ID_PNG, std::string()}) {
        for (const int64_t width : kSides) {
            for (const int64_t height : kSides) {
                for (const double fps : kRates) {
                    for (const int quality : {INT_MIN, -1, 0, 1, 100, INT_MAX}) {
                        const int64_t bitrate = GetDefaultVideoBitrate(codec, width, height, fps, quality);
                        ASSERT_GE(bitrate, IFormatCodecVideo::MIN_VIDEO_BITRATE);
                        ASSERT_LE(bitrate, IFormatCodecVideo::MAX_VIDEO_BITRATE);
                    }
                }
            }
        }
    }
    EXPECT_EQ(GetDefaultVideoBitrate("", 0, 0, 0, 0), IFormatCodecVideo::MIN_VIDEO_BITRATE);
    EXPECT_EQ(GetDefaultVideoBitrate("", INT64_MAX, INT64_MAX, kInfinity, 100), IFormatCodecVideo::MAX_VIDEO_BITRATE);
    EXPECT_EQ(GetDefaultVideoBitrate("", 1280, 720, kNaN, 50), GetDefaultVideoBitrate("", 1280, 720, 30, 50));
}

}  // namespace
}  // namespace Kestro::Conf
