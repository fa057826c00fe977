#include <gtest/gtest.h>

#include "Kestro/Conf/DataHelpers/DataHelperProxyAuto.h"
#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/DataHelpers/FakeConstraintConsumer.h"
#include "Kestro/Conf/HelperException.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"

#include "tests/Failure.h"

namespace Kestro::Conf {
namespace {

using Core::Property;

std::string Offered(const boost::intrusive_ptr<const IDataHelper>& helper, const std::string& key) {
    ConstraintMap constraints;
    helper->FillConstraints(constraints);
    const auto consumer = FakeConstraintConsumer::Create();
    constraints.at(key)->FillValueList(consumer);
    std::string names;
    for (const Property& value : consumer->GetResult()) names += value.GetString() + " ";
    return names;
}

constexpr const char* kRate = "AudioResample/Resampler/SampleRate";
constexpr const char* kLayout = "AudioResample/Resampler/Layout";
constexpr const char* kFps = "VideoFrameRate/Fps";

/// What the helper's first rule on that setting demands; null without one.
boost::intrusive_ptr<IPropertyConstraint> RuleOn(const std::string& path,
                                                 const boost::intrusive_ptr<const IDataHelper>& helper) {
    ValidationRuleList rules;
    helper->FillValidationRules(rules);
    for (const auto& [key, rule] : rules) {
        if (rule->GetSecondName() == path) return rule->GetSecondConstraint();
    }
    return {};
}

TEST(AutomaticHelper, OffersTheAutomaticValueFirst) {
    const auto mp3 = CreateDataHelperAuto(IPreset::KEY_FILTER_AUDIO_CODEC, IFormatCodecAudio::CODEC_ID_MP3);
    EXPECT_EQ(Offered(mp3, IFormatCodec::TAG_BITRATE_MODE), "cbr_auto cbr vbr ");
    const auto mp4 = CreateDataHelperAuto(IPreset::KEY_FORMAT, IFormatFile::FORMAT_MP4);
    EXPECT_EQ(Offered(mp4, "Streams/TypeId=audio/AudioCodec/CodecId"), "auto aac ac3 dts mp3 ");
    EXPECT_EQ(Offered(mp4, "Streams/TypeId=video/VideoCodec/CodecId"), "h264 mpeg4 hevc ");
}

TEST(AutomaticHelper, SaysTheRestAsTheHelperThatItWraps) {
    const std::string& type = IPreset::KEY_FILTER_AUDIO_CODEC;
    const auto plain = CreateDataHelper(type, IFormatCodecAudio::CODEC_ID_AAC);
    const auto automatic = CreateDataHelperAuto(type, IFormatCodecAudio::CODEC_ID_AAC);
    EXPECT_NE(automatic, CreateDataHelperAuto(type, IFormatCodecAudio::CODEC_ID_AAC));
    EXPECT_EQ(automatic->GetDefaultSettings(), plain->GetDefaultSettings());
    ConstraintMap ours;
    ConstraintMap theirs;
    automatic->FillConstraints(ours);
    plain->FillConstraints(theirs);
    EXPECT_EQ(ours.size(), theirs.size());
    EXPECT_EQ(ours.at(IFormatCodec::TAG_BITRATE), theirs.at(IFormatCodec::TAG_BITRATE));
    ExpectFailure<HelperException>([&] { CreateDataHelperAuto(type, "no such"); },
                                   [&](const Exception& e) {
                                       EXPECT_EQ(InfoOf<HelperException::TagClassIsFound>(e), type);
                                       EXPECT_EQ(InfoOf<HelperException::TagTypeIsNotFound>(e), "no such");
                                   });
}

TEST(AutomaticHelper, OffersFilterChoicesInRules) {
    const struct {
        const std::string& type;
        std::string name;
        const char* path;
        Property automatic;
        Property refused;
        std::string offered;  // begins so
    } rows[] = {
        {IPreset::KEY_FILTER_AUDIO_CODEC, "mp3", kRate, {"", -1}, {"", 44}, "Auto 8000 "},
        {IPreset::KEY_FILTER_AUDIO_CODEC, "mp3", kLayout, {"", "unknown"}, {"", "5.1"}, "Auto mono "},
        {IPreset::KEY_FILTER_VIDEO_CODEC,
         "mpeg2video",
         kFps,
         {"", Property::Ratio(0)},
         {"", Property::Ratio(7)},
         "Auto 23.97 "},
        {IPreset::KEY_FORMAT, "flv", kRate, {"", -1}, {"", 8000}, "Auto 11025 "},
        // Offered by the container itself, and once.
        {IPreset::KEY_FORMAT, "gif", kFps, {"", Property::Ratio(0)}, {"", Property::Ratio(7)}, "Auto 8 "},
        // Neither bounds nor a description hide behind a list of one.
        {IPreset::KEY_FILTER_AUDIO_CODEC, "alac", kRate, {"", -1}, {"", 0}, "minValue "},
        {IPreset::KEY_FILTER_VIDEO_CODEC, "h264", kFps, {"", Property::Ratio(0)}, {"", Property::Ratio(-1)}, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name + " " + row.path);
        const auto constraint = RuleOn(row.path, CreateDataHelperAuto(row.type, row.name));
        ASSERT_TRUE(constraint);
        EXPECT_TRUE(constraint->IsValid(row.automatic));
        Property kept = row.automatic;
        EXPECT_TRUE(constraint->CorrectValue(kept));
        EXPECT_EQ(kept, row.automatic);
        EXPECT_FALSE(constraint->IsValid(row.refused));
        const auto consumer = FakeConstraintConsumer::Create();
        constraint->FillValueList(consumer);
        std::string names;
        for (const Property& value : consumer->GetResult()) names += value.Name() + " ";
        EXPECT_EQ(names.substr(0, row.offered.size()), row.offered);
        EXPECT_EQ(names.find("Auto", 1), std::string::npos);
    }
    const auto rates = RuleOn(kRate, CreateDataHelperAuto(IPreset::KEY_FILTER_AUDIO_CODEC, "mp2"));
    EXPECT_NE(rates->GetDescription("SampleRate").find(": Auto 32000 "), std::string::npos);
}

// Whatever the helper: its own choices stay, in their order, and nothing else changes.
TEST(AutomaticHelper, TakesNothingAway) {
    for (const std::string& type :
         {IPreset::KEY_FORMAT, IPreset::KEY_FILTER_AUDIO_CODEC, IPreset::KEY_FILTER_VIDEO_CODEC}) {
        for (const auto& [name, plain] : GetAvailableDataHelpers(type)) {
            SCOPED_TRACE(type + " " + name);
            const auto automatic = CreateDataHelperAuto(type, name);
            ConstraintMap own;
            plain->FillConstraints(own);
            ConstraintMap widened;
            automatic->FillConstraints(widened);
            EXPECT_EQ(widened.size(), own.size());
            for (const auto& [key, constraint] : own) {
                if (widened.at(key) == constraint) continue;
                EXPECT_TRUE(Offered(automatic, key).ends_with(Offered(plain, key))) << key;
            }
            ValidationRuleList ownRules;
            plain->FillValidationRules(ownRules);
            ValidationRuleList rules = {ownRules.begin(), ownRules.begin() + (ownRules.empty() ? 0 : 1)};
            const size_t before = rules.size();
            automatic->FillValidationRules(rules);
            ASSERT_EQ(rules.size(), before + ownRules.size());
            for (size_t i = 0; i < ownRules.size(); ++i) {
                const auto& [path, rule] = rules[before + i];
                EXPECT_EQ(path, ownRules[i].first);
                const auto& ownRule = ownRules[i].second;
                const std::string& second = ownRule->GetSecondName();
                const bool isChoice = second == kRate || second == kLayout || second == kFps;
                EXPECT_EQ(rule->GetFirstConstraint(), ownRule->GetFirstConstraint());
                EXPECT_TRUE(isChoice || rule == ownRule) << second;
            }
        }
    }
}

}  // namespace
}  // namespace Kestro::Conf
