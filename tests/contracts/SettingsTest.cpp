#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

#include "Kestro/Conf/CodecKinds.h"
#include "Kestro/Conf/ConfException.h"
#include "Kestro/Conf/GetDefaultVideoBitrate.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Core/PropertyException.h"
#include "Kestro/Proc/IFilterResample.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/Proc/IResize.h"

#include "tests/Failure.h"
#include "tests/Trees.h"

namespace Kestro::Proc {
namespace {

using Conf::GetDefaultVideoBitrate;
using Core::Dump;
using Core::Property;
using Fit = SettingsResizer::Fit;
using Mode = SettingsResizer::FrameSizeMode;
using Ratio = boost::rational<int64_t>;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr Mode kModes[] = {Mode::Original, Mode::HalfOriginal, Mode::QuarterOriginal, Mode::Custom, Mode::CustomScale};

TEST(Resizer, OutputFrameSizes) {
    const struct {
        const char* what;
        SettingsResizer settings;
        int64_t sourceWidth, sourceHeight, width, height;
    } cases[] = {
        {"default", {}, 1920, 1080, 1920, 1080},
        {"odd source", {}, 1279, 721, 1278, 720},
        {"half is odd", {.frameSizeMode = Mode::HalfOriginal}, 854, 482, 426, 240},
        {"quarter", {.frameSizeMode = Mode::QuarterOriginal}, 1920, 1080, 480, 270},
        {"quarter of little", {.frameSizeMode = Mode::QuarterOriginal}, 4, 4, 2, 2},
        {"larger custom", {Mode::Custom, 1921, 1081, Fit::Letterbox}, 640, 360, 1920, 1080},
        {"a width alone", {Mode::Custom, 640, 0, Fit::Stretch}, 1920, 1080, 640, 248},
        {"a height alone", {Mode::Custom, -1, 540, Fit::Letterbox}, 1920, 1080, 1396, 540},
        {"up to, wide", {Mode::Custom, 640, 480, Fit::UpTo}, 1920, 1080, 640, 360},
        {"up to, tall", {Mode::Custom, 640, 480, Fit::UpTo}, 1080, 1920, 270, 480},
        {"up to, rounded", {Mode::Custom, 640, 480, Fit::UpTo}, 1366, 768, 640, 360},
        {"up to, smaller source", {Mode::Custom, 640, 480, Fit::UpTo}, 320, 200, 320, 200},
        {"up to, one side", {Mode::Custom, 0, 540, Fit::UpTo}, 1920, 1080, 960, 540},
        {"scale up", {Mode::CustomScale, 150, 200}, 640, 360, 960, 720},
        {"scale one side", {Mode::CustomScale, 0, 50}, 640, 360, 640, 180},
    };
    for (const auto& [what, settings, sourceWidth, sourceHeight, width, height] : cases) {
        const FrameInfo frame = settings.GetOutputFrameSize({sourceWidth, sourceHeight, Ratio(16, 11)});
        EXPECT_TRUE(frame.width == width && frame.height == height) << what << frame.width << 'x' << frame.height;
        // Pixels become square in an exact custom size.
        const bool isSquare = settings.frameSizeMode == Mode::Custom && settings.fit != Fit::UpTo;
        EXPECT_EQ(frame.sampleAspectRatio, isSquare ? Ratio(1) : Ratio(16, 11)) << what;
    }
}

TEST(Resizer, SidesAreSoundWhateverIsAsked) {
    constexpr int64_t kSides[] = {INT64_MIN, -1, 0, 1, 2, 3, 101, 1080, 4096, INT32_MAX, INT64_MAX};
    const auto isSound = [](int64_t side, int64_t asked, int64_t most) {
        return side % 2 == 0 && side >= SettingsResizer::MIN_SIDE && side <= most && (asked <= 1 || side <= asked);
    };
    const auto check = [&](const FrameInfo& given, const SettingsResizer& settings) {
        const FrameInfo source = SettingsResizer{}.GetOutputFrameSize(given);
        const FrameInfo frame = settings.GetOutputFrameSize(given);
        const bool isUpTo = settings.frameSizeMode == Mode::Custom;
        constexpr int64_t kMost = SettingsResizer::MAX_SIDE;
        ASSERT_TRUE(isSound(frame.width, isUpTo ? settings.width : 0, isUpTo ? source.width : kMost) &&
                    isSound(frame.height, isUpTo ? settings.height : 0, isUpTo ? source.height : kMost))
            << given.width << 'x' << given.height << " to " << settings.width << 'x' << settings.height;
        // The proportions of the source: one side is exact, the other off by a pixel at most.
        if (!isUpTo || std::min(frame.width, frame.height) == SettingsResizer::MIN_SIDE) return;
        ASSERT_LE(std::abs(frame.width * source.height - frame.height * source.width),
                  std::max(source.width, source.height));
    };
    for (const Mode mode : kModes) {
        for (const int64_t sourceWidth : kSides) {
            for (const int64_t sourceHeight : kSides) {
                for (const int64_t width : kSides) {
                    for (const int64_t height : kSides) {
                        check({sourceWidth, sourceHeight}, {mode, width, height, Fit::UpTo});
                    }
                }
            }
        }
    }
}

TEST(Resizer, SettingsAreATree) {
    const std::string defaults = Dump(IFilterResize::Settings2Property({}));
    EXPECT_EQ(defaults,
              "VideoResize{Resizer{TypeId=default,FrameSizeMode=original,Width=0,Height=0,Fit=auto,Scaler=bicubic}}");
    const auto names = [](const std::string& tag, const auto& set, int count) {
        std::string text;
        for (int i = 0; i < count; ++i) {
            SettingsResizer settings;
            set(settings, i);
            const Property tree = IFilterResize::Settings2Property(settings);
            EXPECT_TRUE(IFilterResize::Property2Settings(tree) == settings) << Dump(tree);
            text += tree[IResize::CLASS_ID][tag].GetString() + " ";
        }
        Property tree = IFilterResize::Settings2Property({});
        for (const char* unknown : {"", "Original", "custom ", "sideways"}) {
            tree[IResize::CLASS_ID].SetChild(tag, unknown);
            ExpectFailure<Conf::ConfException>([&] { IFilterResize::Property2Settings(tree); },
                                               [&](const Exception& e) { EXPECT_EQ(InfoOf<TagDetails>(e), unknown); });
        }
        tree[IResize::CLASS_ID].SetChild(tag, 1);
        EXPECT_THROW(IFilterResize::Property2Settings(tree), Core::PropertyException) << tag;
        tree[IResize::CLASS_ID].RemoveChild(tag);
        EXPECT_TRUE(IFilterResize::Property2Settings(tree) == SettingsResizer{}) << tag;
        return text;
    };
    const auto setMode = [](SettingsResizer& s, int i) { s.frameSizeMode = static_cast<Mode>(i); };
    const auto setFit = [](SettingsResizer& s, int i) { s.fit = static_cast<Fit>(i); };
    const auto setMethod = [](SettingsResizer& s, int i) { s.method = static_cast<SettingsResizer::Method>(i); };
    EXPECT_EQ(names(IResize::FRAME_SIZE_MODE, setMode, 5), "original half quarter custom custom_scale ");
    EXPECT_EQ(names(IResize::MODE, setFit, 6), "auto stretch crop letterbox smart_fit up_to ");
    EXPECT_EQ(names(IResize::METHOD, setMethod, 4), "neighbor fast_bilinear bilinear bicubic ");
    EXPECT_THROW(IFilterResize::Settings2Property({.fit = static_cast<Fit>(99)}), Conf::ConfException);
    EXPECT_TRUE(IFilterResize::Property2Settings(Property("", 5)) == SettingsResizer{});
}

TEST(Resampler, SettingsHoldNamesOfLayoutAndFormat) {
    EXPECT_EQ(
        Dump(IFilterResample::MakeSettings(Conf::ChannelLayout::Layout5Point1Back, 48000, Conf::SampleFormats::Fltp)),
        "AudioResample{Resampler{TypeId=default,SampleRate=48000,Layout=5.1,SampleFmt=fltp}}");
    EXPECT_EQ(Dump(IFilterResample::MakeSettings(static_cast<Conf::ChannelLayout>(-7), 0,
                                                 static_cast<Conf::SampleFormats>(99))),
              "AudioResample{Resampler{TypeId=default,SampleRate=0,Layout=unknown,SampleFmt=none}}");
}

// YouTube Help, "Recommended upload encoding settings", SDR: the published rate, or the middle of the published range.
TEST(DefaultVideoBitrate, IsNearWhatVideoPlatformsAskFor) {
    const struct {
        int64_t width, height;
        double mbitAt30, mbitAt60;
    } published[] = {{640, 360, 1, 1.5},  {854, 480, 2.5, 4},   {1280, 720, 5, 7.5},
                     {1920, 1080, 8, 12}, {2560, 1440, 16, 24}, {3840, 2160, 40, 60.5}};
    for (const auto& row : published) {
        for (const auto& [fps, mbit] : {std::pair(30.0, row.mbitAt30), {60.0, row.mbitAt60}}) {
            const double ratio =
                static_cast<double>(GetDefaultVideoBitrate("h264", row.width, row.height, fps, -1)) / (mbit * 1e6);
            EXPECT_LT(std::max(ratio, 1 / ratio), 1.5) << row.height << "p at " << fps;
        }
    }
    const auto ofQuality = [](int quality) {
        return static_cast<double>(GetDefaultVideoBitrate("h264", 1920, 1080, 25, quality));
    };
    for (const int none : {INT_MIN, -1, 0}) EXPECT_EQ(ofQuality(none), ofQuality(50));
    EXPECT_EQ(ofQuality(INT_MAX), ofQuality(100));
    EXPECT_NEAR(ofQuality(75) / ofQuality(50), 2, 1e-6);
    EXPECT_NEAR(ofQuality(50) / ofQuality(25), 2, 1e-6);
    int64_t previous = 0;
    for (const char* codec : {"av1", "vp9", "h264", "vp8", "mpeg4", "mpeg2video", "mjpeg", "prores", "utvideo"}) {
        const int64_t bitrate = GetDefaultVideoBitrate(codec, 1280, 720, 30, -1);
        EXPECT_GT(bitrate, previous) << codec << ": older codecs need more";
        previous = bitrate;
    }
    EXPECT_EQ(GetDefaultVideoBitrate("no codec", 1280, 720, 30, -1), GetDefaultVideoBitrate("h264", 1280, 720, 30, -1));
    EXPECT_EQ(GetDefaultVideoBitrate("hevc", 1280, 720, 30, -1), GetDefaultVideoBitrate("vp9", 1280, 720, 30, -1));
}

TEST(DefaultVideoBitrate, StaysInRangeAndGrowsWithTheFrame) {
    using Conf::IFormatCodecVideo;
    constexpr double kRates[] = {-kInf, -1, 0, std::numeric_limits<double>::denorm_min(), 25, 1e308, kInf, kNan};
    for (const std::string& codec : Conf::VideoCodecIds()) {
        for (const double fps : kRates) {
            for (const int quality : {INT_MIN, 0, 1, 100, INT_MAX}) {
                int64_t previous = IFormatCodecVideo::MIN_VIDEO_BITRATE;
                for (const int64_t side : {INT64_MIN, int64_t{0}, int64_t{1}, int64_t{480}, int64_t{1080}, INT64_MAX}) {
                    const int64_t bitrate = GetDefaultVideoBitrate(codec, side, side, fps, quality);
                    ASSERT_TRUE(previous <= bitrate && bitrate <= IFormatCodecVideo::MAX_VIDEO_BITRATE) << codec << fps;
                    previous = bitrate;
                }
            }
        }
    }
    EXPECT_EQ(GetDefaultVideoBitrate("", INT64_MAX, INT64_MAX, kInf, 100), IFormatCodecVideo::MAX_VIDEO_BITRATE);
    EXPECT_EQ(GetDefaultVideoBitrate("", 1280, 720, kNan, 50), GetDefaultVideoBitrate("", 1280, 720, 30, 50));
}

}  // namespace
}  // namespace Kestro::Proc
