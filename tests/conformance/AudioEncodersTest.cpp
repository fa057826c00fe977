#include <gmock/gmock.h>

extern "C" {
#include <libavutil/log.h>
}

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Conf/LayoutRecord.h"
#include "Kestro/Conf/SampleFmtRecord.h"
#include "Kestro/FFWrapper/BitrateLimits.h"
#include "Kestro/FFWrapper/ChannelLayoutMapping.h"
#include "Kestro/FFWrapper/EncoderCapabilities.h"
#include "Kestro/FFWrapper/EncoderNameFromCodecId.h"

#include "AudioEncoder.h"
#include "Offers.h"
#include "tests/Trees.h"

// Whether FFmpeg's encoder takes what the helper of its codec offers and what its rules accept.

namespace Kestro::Conf {
namespace {

using Core::Property;

constexpr EncoderException kExceptions[] = {
    {"aac", "EncodeOptions/Profile", "aac_he aac_he_v2 aac_ld aac_eld", "unreadable",
     "they name what FFmpeg's encoder cannot do"},
    {"aac", "SampleRate", "16000 12000 11025 8000 7350", "another bitrate", "a frame holds 6144 bits a channel"},
    {"ac3", "Layout", "quad 5.0 5.1", "another layout",
     "the format does not tell speakers behind from those at the side"},
    {"dca", "RateControl", "cbr", "refused", "256000 bit/s suffice for two channels up to 44100 Hz"},
    {"wmav2", "RateControl", "vbr", "no effect", "FFmpeg's encoder has constant bitrate alone"},
};

bool HasConstantBitrate(const std::string& codecId) {
    constexpr const char* kCodecs[] = {"ac3", "amr_nb", "dts", "mp2", "mp3", "wmav2"};
    return codecId.starts_with("pcm_") ||
           std::find(std::begin(kCodecs), std::end(kCodecs), codecId) != std::end(kCodecs);
}

class AudioEncoder : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override {
        if (encoder_.empty()) GTEST_SKIP() << "no encoder for " << GetParam() << " in the installed FFmpeg";
        av_log_set_level(AV_LOG_QUIET);
        helper_->FillConstraints(constraints_);
        usual_ = helper_->GetDefaultSettings();
        const auto formats = FFWrapper::EncoderCapabilities::Find(encoder_)->sampleFormats;
        usual_.SetChild(IFormatCodecAudio::TAG_SAMPLE_RATE, 48000);
        usual_.SetChild(IFormatCodecAudio::TAG_LAYOUT, IFormatCodecAudio::TAG_CH_LAYOUT_STEREO);
        usual_.SetChild(IFormatCodecAudio::TAG_SAMPLE_FORMAT, SampleFmtRecord::Find(formats.front())->name);
        ValidationRuleList rules;
        helper_->FillValidationRules(rules);
        for (const auto& [path, rule] : rules) {
            if (!rule->GetFirstName().ends_with(IFormatCodec::TAG_CODEC_ID)) continue;
            const std::string tag = path.substr(path.rfind(Property::SEPARATOR) + 1);
            accepted_[tag] = rule->GetSecondConstraint();
            accepted_[tag]->CorrectValue(usual_[tag]);
        }
    }

    /// What the encoder makes of settings; nothing when it does as they say.
    std::string Outcome(Property codec) const {
        helper_->CorrectFormatCodec(codec);
        const auto encoded = Encode(encoder_, codec);
        if (!encoded) return "refused";
        if (encoded->sampleRate == 0) return "unreadable";
        if (encoded->sampleRate != codec[IFormatCodecAudio::TAG_SAMPLE_RATE].GetInt64()) return "another rate";
        if (encoded->layout != codec[IFormatCodecAudio::TAG_LAYOUT].GetString()) return "another layout";
        const bool isVariable = codec[IFormatCodec::TAG_BITRATE_MODE].GetString() == IFormatCodec::TAG_BITRATE_MODE_VBR;
        if (isVariable) return constraints_.contains(IFormatCodec::TAG_QUALITY) ? OutcomeOfQuality(codec) : "";
        const int64_t bitrate = codec[IFormatCodec::TAG_BITRATE].GetInt64();
        const double off = std::abs(encoded->bitrate / static_cast<double>(bitrate) - 1.0);
        constexpr double kRounding = 0.01;
        const bool holds = encoded->openedBitrate == bitrate && (off < kRounding || !HasConstantBitrate(GetParam()));
        return holds ? "" : "another bitrate";
    }

    std::string OutcomeOfQuality(Property codec) const {
        codec.SetChild(IFormatCodec::TAG_QUALITY, 1);
        const auto worst = Encode(encoder_, codec);
        codec.SetChild(IFormatCodec::TAG_QUALITY, IFormatCodec::MAX_QUALITY);
        const auto best = Encode(encoder_, codec);
        if (!worst || !best) return "refused";
        return worst->bitrate < best->bitrate ? "" : "no effect";
    }

    const std::string encoder_ = FFWrapper::EncoderNameFromCodecId(GetParam());
    const boost::intrusive_ptr<const IDataHelper> helper_ =
        CreateDataHelper(IPreset::KEY_FILTER_AUDIO_CODEC, GetParam());
    ConstraintMap constraints_;
    /// By tag: what the resampler may give.
    std::map<std::string, boost::intrusive_ptr<IPropertyConstraint>> accepted_;
    /// The defaults, and 48000 Hz stereo or what is nearest to it.
    Property usual_;
};

TEST_P(AudioEncoder, TakesEachValueWithTheOthersAsByDefault) {
    std::vector<std::string> findings;
    const auto tryAll = [&](const std::string& path, const IPropertyConstraint& constraint) {
        for (const Property& value : Values(constraint)) {
            Property codec = usual_;
            codec.ChildByPath(path).CopyDataFrom(value);
            const std::string outcome = Outcome(codec);
            if (!outcome.empty()) {
                findings.push_back(path + "=" + Core::PropertyValueToString(value) + ": " + outcome);
            }
        }
    };
    for (const auto& [path, constraint] : constraints_) {
        if (usual_.FindByPath(path) != nullptr) tryAll(path, *constraint);
    }
    for (const auto& [tag, constraint] : accepted_) tryAll(tag, *constraint);
    EXPECT_THAT(findings, testing::UnorderedElementsAreArray(ExpectedOf(kExceptions, encoder_)));
}

INSTANTIATE_TEST_SUITE_P(, AudioEncoder, testing::ValuesIn(CodecsOf(IPreset::KEY_FILTER_AUDIO_CODEC)),
                         [](const auto& test) { return test.param; });

/// An encoder whose bitrates go by sample rate and layout, which its helper knows.
class LimitedAudioEncoder : public AudioEncoder {};

TEST_P(LimitedAudioEncoder, TakesTheCorrectedBitrateAtEveryRateAndLayout) {
    const bool encodes = HasConstantBitrate(GetParam());  // it clamps without a word
    Property codec = usual_;
    for (const Property& rate : Values(*accepted_.at(IFormatCodecAudio::TAG_SAMPLE_RATE))) {
        codec[IFormatCodecAudio::TAG_SAMPLE_RATE].CopyDataFrom(rate);
        for (const Property& layout : Values(*accepted_.at(IFormatCodecAudio::TAG_LAYOUT))) {
            codec[IFormatCodecAudio::TAG_LAYOUT].CopyDataFrom(layout);
            for (const Property& bitrate : Values(*constraints_.at(IFormatCodec::TAG_BITRATE))) {
                codec[IFormatCodec::TAG_BITRATE].CopyDataFrom(bitrate);
                Property corrected = codec;
                helper_->CorrectFormatCodec(corrected);
                EXPECT_TRUE(constraints_.at(IFormatCodec::TAG_BITRATE)->IsValid(corrected[IFormatCodec::TAG_BITRATE]));
                EXPECT_TRUE(encodes ? Outcome(codec).empty() : Opens(encoder_, corrected)) << Core::Dump(corrected);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, LimitedAudioEncoder, testing::Values("mp3", "vorbis"),
                         [](const auto& test) { return test.param; });

TEST(AudioEncoders, DtsBitratesEndWhereTheEncodersDo) {
    const std::string encoder = FFWrapper::EncoderNameFromCodecId("dts");
    if (encoder.empty()) GTEST_SKIP() << "no encoder for dts in the installed FFmpeg";
    const auto capabilities = FFWrapper::EncoderCapabilities::Find(encoder);
    const auto helper = CreateDataHelper(IPreset::KEY_FILTER_AUDIO_CODEC, "dts");
    ConstraintMap constraints;
    helper->FillConstraints(constraints);
    Property codec = helper->GetDefaultSettings();
    codec.SetChild(IFormatCodecAudio::TAG_SAMPLE_FORMAT, "s32");
    const auto opens = [&](int64_t bitrate) {
        codec.SetChild(IFormatCodec::TAG_BITRATE, bitrate);
        return Opens(encoder, codec);
    };
    const auto accepts = [&](int64_t bitrate) {
        return constraints.at(IFormatCodec::TAG_BITRATE)->IsValid(Property("", bitrate));
    };
    int64_t lowest = std::numeric_limits<int64_t>::max();
    int64_t highest = 0;
    for (const int rate : capabilities->sampleRates) {
        codec.SetChild(IFormatCodecAudio::TAG_SAMPLE_RATE, rate);
        for (const uint64_t mask : capabilities->channelLayouts) {
            const auto layout = FFWrapper::ChannelLayoutKestroFromFFMPEG(mask);
            codec.SetChild(IFormatCodecAudio::TAG_LAYOUT, LayoutRecord::Find(layout)->name);
            const auto limits = FFWrapper::BitrateLimits::OfAudio(encoder, rate, layout);
            ASSERT_TRUE(limits);
            EXPECT_TRUE(opens(limits->lowest) && accepts(limits->lowest)) << Core::Dump(codec);
            EXPECT_FALSE(opens(limits->lowest - 1)) << Core::Dump(codec);
            lowest = std::min(lowest, limits->lowest);
            if (opens(limits->highest)) highest = std::max(highest, limits->highest);
        }
    }
    EXPECT_FALSE(accepts(lowest - 1));
    EXPECT_TRUE(accepts(highest));
    EXPECT_FALSE(accepts(highest + 1) || opens(highest + 1));
}

}  // namespace
}  // namespace Kestro::Conf
