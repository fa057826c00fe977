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

TEST(AutomaticHelper, RulesAcceptWhatKeepsTheSource) {
    const struct {
        const std::string& type;
        std::string name;
        const char* path;
        Property automatic;
        Property refused;
    } rows[] = {
        {IPreset::KEY_FILTER_AUDIO_CODEC, "mp3", "AudioResample/Resampler/SampleRate", {"", -1}, {"", 44}},
        {IPreset::KEY_FILTER_AUDIO_CODEC, "mp3", "AudioResample/Resampler/Layout", {"", "unknown"}, {"", "5.1"}},
        {IPreset::KEY_FILTER_VIDEO_CODEC,
         "h264",
         "VideoFrameRate/Fps",
         {"", Property::Ratio(0)},
         {"", Property::Ratio(-1)}},
    };
    for (const auto& row : rows) {
        ValidationRuleList rules;
        CreateDataHelperAuto(row.type, row.name)->FillValidationRules(rules);
        ValidationRuleList plain;
        CreateDataHelper(row.type, row.name)->FillValidationRules(plain);
        ASSERT_EQ(rules.size(), plain.size());
        bool found = false;
        for (const auto& [path, rule] : rules) {
            if (rule->GetSecondName() != row.path) continue;
            found = true;
            EXPECT_TRUE(rule->GetSecondConstraint()->IsValid(row.automatic)) << row.path;
            EXPECT_FALSE(rule->GetSecondConstraint()->IsValid(row.refused)) << row.path;
        }
        EXPECT_TRUE(found) << row.path;
    }
}

}  // namespace
}  // namespace Kestro::Conf
