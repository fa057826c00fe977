#include <gtest/gtest.h>

#include <string>

#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/DataHelpers/Filters/DataHelperAudioFormatter.h"
#include "Kestro/Conf/HelperException.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Core/PropertyException.h"
#include "Kestro/Proc/IFilterAudioFormatter.h"
#include "Kestro/Proc/IFilterAudioVolume.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResample.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/Proc/IResample.h"
#include "Kestro/Proc/IResize.h"
#include "Kestro/Proc/SettingsFilterFrameRate.h"

#include "tests/Failure.h"
#include "tests/Trees.h"

namespace Kestro::Conf {
namespace {

using Core::Dump;
using Core::Property;
using Core::TreeOf;
using Proc::IResize;

boost::intrusive_ptr<const IDataHelper> Filter(const std::string& classId) { return CreateDataHelper(classId, ""); }

boost::intrusive_ptr<IPropertyConstraint> ConstraintOf(const std::string& classId, const std::string& path) {
    ConstraintMap constraints;
    Filter(classId)->FillConstraints(constraints);
    return constraints.at(path);
}

/// The codec node after the filter was applied to it with the given settings.
std::string Applied(const std::string& classId, const Property& settings, const char* codec) {
    Property target = TreeOf(codec);
    Filter(classId)->ApplyPresetSettings(settings, target);
    return Dump(target);
}

TEST(Filters, ResamplerKeepsOrReplacesTheSourcesValues) {
    const auto apply = [](const char* settings, const char* codec) {
        return Applied(Proc::IFilterResample::CLASS_ID, TreeOf(settings), codec);
    };
    const char* const source = "c{SampleRate=8000,Layout=mono}";
    const char* const keep = "f{Resampler{SampleRate=-1,Layout=unknown}}";
    EXPECT_EQ(apply("f{Resampler{SampleRate=48000,Layout=stereo}}", source), "c{SampleRate=48000,Layout=stereo}");
    EXPECT_EQ(apply("f{Resampler{SampleRate='48000',Layout=stereo}}", "c"), "c{SampleRate=48000,Layout=stereo}");
    EXPECT_EQ(apply(keep, source), source);
    EXPECT_EQ(apply(keep, "c"), "c");
    EXPECT_EQ(apply(keep, "c{SampleFmt=s16,BitsPerSample=24}"), "c{SampleFmt=s16,BitsPerSample=16}");
    EXPECT_EQ(apply(keep, "c{SampleFmt=dblp}"), "c{SampleFmt=dblp,BitsPerSample=64}");
    EXPECT_EQ(apply(keep, "c{SampleFmt=none}"), "c{SampleFmt=none}");
    EXPECT_THROW(apply(keep, "c{SampleFmt=s17}"), HelperException);
    EXPECT_THROW(apply(keep, "c{SampleFmt=16}"), Core::PropertyException);
    for (const char* bad : {"f", "f{Resampler}", "f{Resampler{SampleRate=fast,Layout=mono}}",
                            "f{Resampler{SampleRate=1,Layout=1}}", "f{Resampler{Layout=mono}}"}) {
        EXPECT_THROW(apply(bad, source), Core::PropertyException) << bad;
    }
}

TEST(Filters, ResamplerRatesSnapToTheNearest) {
    const auto rates = ConstraintOf(Proc::IFilterResample::CLASS_ID, "Resampler/SampleRate");
    for (const auto& [given, corrected] : {std::pair(44000, 44100), std::pair(100000, 96000), std::pair(10000, 11025),
                                           std::pair(-1, -1), std::pair(-2, -1), std::pair(44100, 44100)}) {
        Property value("", given);
        EXPECT_EQ(rates->IsValid(value), given == corrected) << given;
        EXPECT_TRUE(rates->CorrectValue(value));
        EXPECT_EQ(value.GetInt64(), corrected) << given;
    }
}

TEST(Filters, FrameRateKeepsOrReplacesTheSources) {
    const std::string& id = Proc::IFilterFrameRate::CLASS_ID;
    EXPECT_EQ(Applied(id, Filter(id)->GetDefaultSettings(), "c{Fps=50/1}"), "c{Fps=25/1}");
    EXPECT_EQ(Applied(id, TreeOf("f{Fps=0/1}"), "c{Fps=50/1}"), "c{Fps=50/1}");
    EXPECT_EQ(Applied(id, TreeOf("f{Fps='0'}"), "c{Fps=50/1}"), "c{Fps=50/1}");
    EXPECT_EQ(Applied(id, TreeOf("f{Fps='30000/1001'}"), "c"), "c{Fps=30000/1001}");
    EXPECT_THROW(Applied(id, TreeOf("f"), "c"), Core::PropertyException);

    const auto rates = ConstraintOf(id, IFormatCodecVideo::TAG_FPS);
    EXPECT_TRUE(rates->IsValid({"", Proc::SettingsFilterFrameRate::MARK_USE_ORIGINAL_FRAMERATE}));
    EXPECT_TRUE(rates->IsValid({"", Property::Ratio(60000, 1001)}));
    EXPECT_FALSE(rates->IsValid({"", Property::Ratio(-25)}));
}

TEST(Filters, ResizerGivesEvenSizes) {
    const std::string& id = Proc::IFilterResize::CLASS_ID;
    const auto filter = Filter(id);
    const auto custom = [&](int64_t width, int64_t height) {
        Property settings = filter->GetDefaultSettings();
        Property& resizer = settings[IResize::CLASS_ID];
        resizer.SetChild(IResize::FRAME_SIZE_MODE, IResize::FRAME_SIZE_CUSTOM);
        resizer.SetChild(IFormatCodecVideo::TAG_WIDTH, width);
        resizer.SetChild(IFormatCodecVideo::TAG_HEIGHT, height);
        return settings;
    };
    EXPECT_EQ(Applied(id, filter->GetDefaultSettings(), "c{Width=1279,Height=719}"), "c{Width=1278,Height=718}");
    EXPECT_EQ(Applied(id, custom(641, 360), "c{Width=1279,Height=719}"), "c{Width=640,Height=360}");
    EXPECT_EQ(Applied(id, custom(640, 360), "c{Width=720,Height=576,AspectX=16,AspectY=15}"),
              "c{Width=640,Height=360,AspectX=1,AspectY=1}");
    EXPECT_THROW(Applied(id, custom(640, 360), "c"), Core::PropertyException);

    ValidationRuleList rules;
    filter->FillValidationRules(rules);
    ASSERT_EQ(rules.size(), 2U);
    const auto keepsRules = [&](const Property& settings) {
        Property tree;
        tree.SetChild(id, settings);
        return rules[0].second->Validate(tree) && rules[1].second->Validate(tree);
    };
    EXPECT_TRUE(keepsRules(filter->GetDefaultSettings()));
    EXPECT_TRUE(keepsRules(custom(640, 360)));
    EXPECT_FALSE(keepsRules(custom(641, 360)));
    EXPECT_FALSE(keepsRules(custom(640, 361)));
}

TEST(Filters, VolumeGoesUpTo200Percent) {
    const auto volume = ConstraintOf(Proc::IFilterAudioVolume::CLASS_ID, Proc::IFilterAudioVolume::VOLUME_VALUE);
    EXPECT_TRUE(volume->IsValid({"", 200}));
    EXPECT_TRUE(volume->IsValid({"", 0}));
    EXPECT_FALSE(volume->IsValid({"", 201}));
    EXPECT_EQ(Applied(Proc::IFilterAudioVolume::CLASS_ID, TreeOf("f{VolumePercent=9}"), "c{VolumePercent=7}"),
              "c{VolumePercent=7}");
}

TEST(Filters, PacketsAreMadeByAHelperOfTheirOwn) {
    const auto mine = DataHelperAudioFormatter::Create();
    const auto registered = Filter(Proc::IFilterAudioFormatter::CLASS_ID);
    EXPECT_NE(mine, registered);
    EXPECT_EQ(mine->GetRefCount(), 1);
    EXPECT_EQ(mine->GetDefaultSettings(), registered->GetDefaultSettings());
    EXPECT_EQ(Dump(mine->GetDefaultSettings()), "AudioPackets{Packetizer{TypeId=default},PacketDuration=100000}");
    ConstraintMap constraints;
    mine->FillConstraints(constraints);
    EXPECT_TRUE(constraints.empty());
}

}  // namespace
}  // namespace Kestro::Conf
