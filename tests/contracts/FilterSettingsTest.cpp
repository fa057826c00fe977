#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "Kestro/Conf/ConfException.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Core/PropertyException.h"
#include "Kestro/Proc/IFilterResample.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/Proc/ImplNames.h"
#include "Kestro/Proc/IResample.h"
#include "Kestro/Proc/IResize.h"

namespace Kestro::Proc {
namespace {

using Conf::IFormatCodecAudio;
using Conf::IPreset;
using Core::Property;
using Fit = SettingsResizer::Fit;
using FrameSizeMode = SettingsResizer::FrameSizeMode;
using Method = SettingsResizer::Method;
using Ratio = boost::rational<int64_t>;

constexpr FrameSizeMode kModes[] = {FrameSizeMode::Original, FrameSizeMode::HalfOriginal,
                                    FrameSizeMode::QuarterOriginal, FrameSizeMode::Custom, FrameSizeMode::CustomScale};
constexpr Fit kFits[] = {Fit::Auto, Fit::Stretch, Fit::Crop, Fit::Letterbox, Fit::SmartFit, Fit::UpTo};
constexpr Method kMethods[] = {Method::Point, Method::FastBilinear, Method::Bilinear, Method::Bicubic};

TEST(Resizer, OutputFrameSizes) {
    const struct {
        const char* what;
        SettingsResizer settings;
        int64_t sourceWidth, sourceHeight, width, height;
    } cases[] = {
        {"default", {}, 1920, 1080, 1920, 1080},
        {"odd source", {}, 1279, 721, 1278, 720},
        {"half", {.frameSizeMode = FrameSizeMode::HalfOriginal}, 1920, 1080, 960, 540},
        {"half is odd", {.frameSizeMode = FrameSizeMode::HalfOriginal}, 854, 482, 426, 240},
        {"quarter", {.frameSizeMode = FrameSizeMode::QuarterOriginal}, 1920, 1080, 480, 270},
        {"quarter of little", {.frameSizeMode = FrameSizeMode::QuarterOriginal}, 4, 4, 2, 2},
        {"custom", {FrameSizeMode::Custom, 640, 480, Fit::Auto}, 1920, 1080, 640, 480},
        {"larger custom", {FrameSizeMode::Custom, 1921, 1081, Fit::Letterbox}, 640, 360, 1920, 1080},
        {"width alone", {FrameSizeMode::Custom, 640, 0, Fit::Stretch}, 1920, 1080, 640, 360},
        {"height alone", {FrameSizeMode::Custom, -1, 541, Fit::Letterbox}, 1366, 768, 960, 540},
        {"up to, wide", {FrameSizeMode::Custom, 640, 480, Fit::UpTo}, 1920, 1080, 640, 360},
        {"up to, tall", {FrameSizeMode::Custom, 640, 480, Fit::UpTo}, 1080, 1920, 270, 480},
        {"up to, rounded", {FrameSizeMode::Custom, 640, 480, Fit::UpTo}, 1366, 768, 640, 360},
        {"up to, smaller source", {FrameSizeMode::Custom, 640, 480, Fit::UpTo}, 320, 200, 320, 200},
        {"up to, one side", {FrameSizeMode::Custom, 0, 540, Fit::UpTo}, 1920, 1080, 960, 540},
        {"scale down", {FrameSizeMode::CustomScale, 50, 25}, 1920, 1080, 960, 270},
        {"scale up", {FrameSizeMode::CustomScale, 150, 200}, 640, 360, 960, 720},
        {"scale one side", {FrameSizeMode::CustomScale, 0, 50}, 640, 360, 640, 180},
    };
    for (const auto& [what, settings, sourceWidth, sourceHeight, width, height] : cases) {
        const FrameInfo frame = settings.GetOutputFrameSize({sourceWidth, sourceHeight});
        EXPECT_EQ(frame.width, width) << what;
        EXPECT_EQ(frame.height, height) << what;
    }
}

TEST(Resizer, PixelsBecomeSquareInAnExactCustomSize) {
    const FrameInfo source{720, 576, Ratio(16, 11)};
    for (const FrameSizeMode mode : kModes) {
        for (const Fit fit : kFits) {
            const SettingsResizer settings{mode, 640, 480, fit};
            const bool square = mode == FrameSizeMode::Custom && fit != Fit::UpTo;
            EXPECT_EQ(settings.GetOutputFrameSize(source).sampleAspectRatio,
                      square ? Ratio(1) : source.sampleAspectRatio);
        }
    }
}

TEST(Resizer, SidesAreSoundWhateverIsAsked) {
    constexpr int64_t kSides[] = {INT64_MIN, -1, 0, 1, 2, 3, 101, 1080, 4096, INT32_MAX, INT64_MAX};
    const auto isSound = [](int64_t side) {
        return side % 2 == 0 && side >= SettingsResizer::MIN_SIDE && side <= SettingsResizer::MAX_SIDE;
    };
    for (const int64_t sourceWidth : kSides) {
        for (const int64_t sourceHeight : kSides) {
            const FrameInfo source = SettingsResizer{}.GetOutputFrameSize({sourceWidth, sourceHeight});
            for (const int64_t width : kSides) {
                for (const int64_t height : kSides) {
                    for (const FrameSizeMode mode : kModes) {
                        const SettingsResizer settings{mode, width, height, Fit::UpTo};
                        const FrameInfo frame = settings.GetOutputFrameSize({sourceWidth, sourceHeight});
                        ASSERT_TRUE(isSound(frame.width) && isSound(frame.height))
                            << sourceWidth << 'x' << sourceHeight << " to " << width << 'x' << height << " in mode "
                            << static_cast<int>(mode);
                        if (mode != FrameSizeMode::Custom) continue;
                        ASSERT_LE(frame.width, source.width);
                        ASSERT_LE(frame.height, source.height);
                        if (width > 1) {
                            ASSERT_LE(frame.width, width);
                        }
                        if (height > 1) {
                            ASSERT_LE(frame.height, height);
                        }
                        if (std::min(frame.width, frame.height) == SettingsResizer::MIN_SIDE) continue;
                        // The proportions of the source: one side is exact, the other off by a pixel at most.
                        ASSERT_LE(std::abs(frame.width * source.height - frame.height * source.width),
                                  std::max(source.width, source.height));
                    }
                }
            }
        }
    }
}

TEST(Resizer, SettingsComeBackFromTheirTree) {
    for (const FrameSizeMode mode : kModes) {
        for (const Fit fit : kFits) {
            for (const Method method : kMethods) {
                const SettingsResizer settings{mode, 1280, INT64_MIN, fit, method};
                const Property tree = IFilterResize::Settings2Property(settings);
                EXPECT_EQ(tree.Name(), IFilterResize::CLASS_ID);
                EXPECT_EQ(tree[IResize::CLASS_ID][IPreset::KEY_TYPE_ID].GetString(), ImplNames::DEFAULT);
                EXPECT_TRUE(IFilterResize::Property2Settings(tree) == settings);
            }
        }
    }
}

TEST(Resizer, WhatTheTreeLacksHasItsDefault) {
    const SettingsResizer defaults;
    EXPECT_TRUE(IFilterResize::Property2Settings(Property("")) == defaults);
    EXPECT_TRUE(IFilterResize::Property2Settings(Property("", 5)) == defaults);
    const Property others =
        IFilterResize::Settings2Property({FrameSizeMode::Custom, 1280, 720, Fit::Crop, Method::Point});
    for (const Property& setting : others[IResize::CLASS_ID]) {
        Property tree = IFilterResize::Settings2Property(defaults);
        tree[IResize::CLASS_ID].RemoveChild(setting.Name());
        EXPECT_TRUE(IFilterResize::Property2Settings(tree) == defaults) << setting.Name();
        tree[IResize::CLASS_ID].SetChild(setting.Name(), setting);
        EXPECT_EQ(IFilterResize::Property2Settings(tree) == defaults, setting.Name() == IPreset::KEY_TYPE_ID)
            << setting.Name();
    }
}

TEST(Resizer, UnknownValuesAreRefused) {
    for (const std::string& tag : {IResize::FRAME_SIZE_MODE, IResize::MODE, IResize::METHOD}) {
        Property tree = IFilterResize::Settings2Property({});
        for (const char* text : {"", "Original", "custom ", "sideways"}) {
            tree[IResize::CLASS_ID].SetChild(tag, text);
            try {
                IFilterResize::Property2Settings(tree);
                ADD_FAILURE() << tag << ' ' << text;
            } catch (const Conf::ConfException& e) {
                EXPECT_EQ(*boost::get_error_info<TagDetails>(e), text);
                EXPECT_NE(boost::get_error_info<TagDescription>(e)->find(tag), std::string::npos);
            }
        }
        tree[IResize::CLASS_ID].SetChild(tag, 1);
        EXPECT_THROW(IFilterResize::Property2Settings(tree), Core::PropertyException) << tag;
    }
    EXPECT_THROW(IFilterResize::Settings2Property({.fit = static_cast<Fit>(99)}), Conf::ConfException);
}

TEST(Resampler, SettingsHoldNamesOfLayoutAndFormat) {
    const struct {
        Conf::ChannelLayout layout;
        int rate;
        Conf::SampleFormats format;
        std::string layoutName, formatName;
    } cases[] = {
        {Conf::ChannelLayout::Stereo, 44100, Conf::SampleFormats::None, IFormatCodecAudio::TAG_CH_LAYOUT_STEREO,
         "none"},
        {Conf::ChannelLayout::Layout5Point1Back, 48000, Conf::SampleFormats::Fltp, "5.1", "fltp"},
        {Conf::ChannelLayout::Unknown, -1, Conf::SampleFormats::S16, IFormatCodecAudio::TAG_CH_LAYOUT_UNKNOWN, "s16"},
        {static_cast<Conf::ChannelLayout>(-7), 0, static_cast<Conf::SampleFormats>(99), "unknown", "none"},
    };
    for (const auto& [layout, rate, format, layoutName, formatName] : cases) {
        const Property tree = IFilterResample::MakeSettings(layout, rate, format);
        EXPECT_EQ(tree.Name(), IFilterResample::CLASS_ID);
        const Property& resampler = tree[IResample::CLASS_ID];
        EXPECT_EQ(resampler[IPreset::KEY_TYPE_ID].GetString(), ImplNames::DEFAULT);
        EXPECT_EQ(resampler[IFormatCodecAudio::TAG_SAMPLE_RATE].Type(), PropertyTypes::Int64);
        EXPECT_EQ(resampler[IFormatCodecAudio::TAG_SAMPLE_RATE].GetInt64(), rate);
        EXPECT_EQ(resampler[IFormatCodecAudio::TAG_LAYOUT].GetString(), layoutName);
        EXPECT_EQ(resampler[IFormatCodecAudio::TAG_SAMPLE_FORMAT].GetString(), formatName);
    }
}

}  // namespace
}  // namespace Kestro::Proc
