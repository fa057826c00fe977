#include <gmock/gmock.h>

extern "C" {
#include <libavcodec/codec_desc.h>
#include <libavutil/log.h>
}

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/FFWrapper/EncoderNameFromCodecId.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/Proc/IResize.h"

#include "Offers.h"
#include "tests/Trees.h"
#include "VideoEncoder.h"

// Whether FFmpeg's encoder takes what the helper of its codec offers, and just the frames that its rules accept.

namespace Kestro::Conf {
namespace {

using Core::Property;

constexpr EncoderException kExceptions[] = {
    {"dvvideo", "BitRate", "800000000", "no effect", "a frame of each size has its one length"},
    {"jpeg2000", "BitRate", "800000000", "no effect", "FFmpeg's encoder goes by quality alone"},
    {"jpegls", "BitRate", "800000000", "no effect", "FFmpeg's encoder is lossless"},
    {"jpegls", "Quality", "100", "no effect", "FFmpeg's encoder is lossless"},
    {"libsvtav1", "BitRate", "400050000 800000000", "refused", "the encoder ends at 100000000 bit/s"},
    {"libx264", "EncodeOptions/Preset", "ultrafast", "another Profile", "it does without all that sets Main apart"},
    {"libx264", "EncodeOptions/Tune", "fastdecode", "another Profile", "it does without all that sets Main apart"},
    {"prores_ks", "BitRate", "800000000", "no effect", "FFmpeg's encoder goes by quality alone"},
};
/// The resizer gives even sides alone.
constexpr EncoderException kFrameExceptions[] = {
    {"libsvtav1", "Frame", "177x144@25/1 176x145@25/1", "refused", "4:2:0 of whole pairs alone"},
    {"pgmyuv", "Frame", "177x144@25/1 176x145@25/1", "refused", "4:2:0 of whole pairs alone"},
    {"utvideo", "Frame", "177x144@25/1 176x145@25/1", "refused", "4:2:0 of whole pairs alone"},
    {"wmv2", "Frame", "177x144@25/1", "refused", "pairs of pixels in a line"},
};

const std::string kProfile = IFormatCodec::TAG_CODEC_OPTIONS_ENCODE + Property::SEPARATOR + IFormatCodec::TAG_PROFILE;

/// What the filters give the encoder.
struct Source {
    int64_t width;
    int64_t height;
    boost::rational<int64_t> rate;
};

class VideoEncoder : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override {
        if (encoder_.empty()) GTEST_SKIP() << "no encoder for " << GetParam() << " in the installed FFmpeg";
        av_log_set_level(AV_LOG_QUIET);
        setenv("SVT_LOG", "0", 1);
        helper_->FillConstraints(constraints_);
        helper_->FillValidationRules(rules_);
        usual_ = helper_->GetDefaultSettings();
        if (!usual_.ChildExists(IFormatCodec::TAG_QUALITY))
            usual_.SetChild(IFormatCodec::TAG_QUALITY, IFormatCodec::MAX_QUALITY);
        CollectSources();
        const auto first = std::ranges::find_if(sources_, [&](const Source& s) { return IsAccepted(usual_, s); });
        ASSERT_NE(first, sources_.end());
        usualSource_ = *first;
    }

    /// The sizes that the helper lists; else a usual one, the same with an odd side, and with a side at each end of its
    /// range. Each at every rate that the helper lists.
    void CollectSources() {
        std::vector<Source> sizes;
        std::vector<Source> otherSizes = {{176, 144}, {177, 144}, {176, 145}};
        for (const auto& [path, rule] : rules_) {
            for (const Property& value : Values(*rule->GetSecondConstraint())) {
                if (path.ends_with(Proc::IResize::FRAME_SIZE_MODE)) {
                    sizes.push_back({value[IFormatCodecVideo::TAG_WIDTH].GetInt64(),
                                     value[IFormatCodecVideo::TAG_HEIGHT].GetInt64()});
                }
                if (path.ends_with(IFormatCodecVideo::TAG_WIDTH)) otherSizes.push_back({value.GetInt64(), 144});
                if (path.ends_with(IFormatCodecVideo::TAG_HEIGHT)) otherSizes.push_back({176, value.GetInt64()});
            }
        }
        const auto rates = constraints_.find(IFormatCodecVideo::TAG_FPS);
        const auto listed = rates != constraints_.end() ? Values(*rates->second) : std::vector{Property("", 25)};
        for (const Source& size : sizes.empty() ? otherSizes : sizes) {
            for (const Property& rate : listed) sources_.push_back({size.width, size.height, rate.GetRatio()});
        }
    }

    bool IsAccepted(const Property& preset, const Source& source) const {
        Proc::SettingsResizer resizer;
        resizer.frameSizeMode = Proc::SettingsResizer::FrameSizeMode::Custom;
        resizer.width = source.width;
        resizer.height = source.height;
        Property tree;
        tree.SetChild(IPreset::KEY_FILTER_VIDEO_CODEC, preset);
        tree.SetChild(Proc::IFilterResize::CLASS_ID, Proc::IFilterResize::Settings2Property(resizer));
        tree.SetChild(Proc::IFilterFrameRate::CLASS_ID, Proc::IFilterFrameRate::MakeSettings(source.rate));
        return std::ranges::all_of(rules_, [&](const auto& entry) { return entry.second->Validate(tree); });
    }

    /// The node that the encoder is set up by.
    Property CodecOf(const Property& preset, const Source& source) const {
        Property codec;
        codec.SetChild(IFormatCodecVideo::TAG_WIDTH, source.width);
        codec.SetChild(IFormatCodecVideo::TAG_HEIGHT, source.height);
        codec.SetChild(IFormatCodecVideo::TAG_FPS, source.rate);
        helper_->ApplyPresetSettings(preset, codec);
        helper_->CorrectFormatCodec(codec);
        if (preset.ChildExists(IFormatCodec::TAG_GLOBAL_HEADER)) codec.SetChild(IFormatCodec::TAG_GLOBAL_HEADER, true);
        return codec;
    }

    /// What the encoder made of that node; nothing when it did as the settings say.
    std::string Outcome(const Property& codec, const std::optional<EncodedVideo>& encoded) const {
        if (!encoded) return "refused";
        if (encoded->decoded == 0) return "unreadable";
        if (encoded->decoded != encoded->sent) return "another number of frames";
        for (const Property& found : encoded->settings) {
            const std::string& tag = found.Name();
            // Where the helper does not list rates, it is the container that has the rate.
            if (tag == IFormatCodecVideo::TAG_FPS && !constraints_.contains(tag)) continue;
            const Property& asked =
                tag == IFormatCodec::TAG_PROFILE ? codec[IFormatCodec::TAG_CODEC_OPTIONS_ENCODE] : codec;
            if (asked.ChildExists(tag) && asked[tag] != found) return "another " + tag;
        }
        return {};
    }

    const std::string encoder_ = FFWrapper::EncoderNameFromCodecId(GetParam());
    const boost::intrusive_ptr<const IDataHelper> helper_ =
        CreateDataHelper(IPreset::KEY_FILTER_VIDEO_CODEC, GetParam());
    ConstraintMap constraints_;
    ValidationRuleList rules_;
    std::vector<Source> sources_;
    Property usual_;
    Source usualSource_{};
};

TEST_P(VideoEncoder, TakesEachValueWithTheOthersAsByDefault) {
    const bool isLossy = (avcodec_descriptor_get_by_name(GetParam().c_str())->props & AV_CODEC_PROP_LOSSY) != 0;
    std::vector<std::string> findings;
    for (const auto& [path, constraint] : constraints_) {
        if (path == IFormatCodecVideo::TAG_FPS) continue;  // goes by the frame size
        Property preset = usual_;
        const auto canUse = [&](const std::string& mode) {
            preset.SetChild(IFormatCodec::TAG_BITRATE_MODE, mode);
            return constraints_.at(IFormatCodec::TAG_BITRATE_MODE)->IsValid(preset[IFormatCodec::TAG_BITRATE_MODE]);
        };
        if (path == IFormatCodec::TAG_QUALITY && !canUse(IFormatCodec::TAG_BITRATE_MODE_VBR)) continue;
        if (path == IFormatCodec::TAG_BITRATE && !canUse(IFormatCodec::TAG_BITRATE_MODE_CBR)) {
            preset = usual_;
            preset[IFormatCodec::TAG_CODEC_OPTIONS_ENCODE].SetChild(IFormatCodecVideo::TAG_APPROVED_VBR_MODE_ONLY,
                                                                    true);
        }
        int64_t least = 0;
        for (const Property& value : Values(*constraint)) {
            preset.ChildByPath(path).CopyDataFrom(value);
            const Property codec = CodecOf(preset, usualSource_);
            const auto encoded = EncodeVideo(encoder_, codec);
            std::string outcome = Outcome(codec, encoded);
            if (encoded && value.Name() == "minValue") least = encoded->bytes;
            const bool isMore = value.Name() != "maxValue" || !isLossy || (encoded && encoded->bytes > least);
            if (outcome.empty() && !isMore) outcome = "no effect";
            if (!outcome.empty()) findings.push_back(path + "=" + Core::PropertyValueToString(value) + ": " + outcome);
        }
    }
    EXPECT_THAT(findings, testing::UnorderedElementsAreArray(ExpectedOf(kExceptions, encoder_)));
}

TEST_P(VideoEncoder, TakesJustTheFramesThatTheRulesAccept) {
    const auto profiles = constraints_.find(kProfile);
    const std::vector<Property> noProfile(1);
    std::vector<std::string> findings;
    for (const Property& profile : profiles != constraints_.end() ? Values(*profiles->second) : noProfile) {
        Property preset = usual_;
        if (!profile.IsEmpty()) preset.ChildByPath(kProfile).CopyDataFrom(profile);
        for (const Source& source : sources_) {
            const Property codec = CodecOf(preset, source);
            const std::string outcome = Outcome(codec, EncodeVideo(encoder_, codec));
            const bool isAccepted = IsAccepted(preset, source);
            if (isAccepted == outcome.empty()) continue;
            findings.push_back("Frame=" + std::to_string(source.width) + "x" + std::to_string(source.height) + "@" +
                               Core::PropertyValueToString(codec[IFormatCodecVideo::TAG_FPS]) +
                               (profile.IsEmpty() ? "" : "/" + profile.GetString()) + ": " +
                               (isAccepted ? outcome : "taken"));
        }
    }
    EXPECT_THAT(findings, testing::UnorderedElementsAreArray(ExpectedOf(kFrameExceptions, encoder_)));
    for (const Source& source : sources_) {
        const auto fits = [&](const Source& other) { return other.rate == source.rate && IsAccepted(usual_, other); };
        ASSERT_TRUE(std::ranges::any_of(sources_, fits)) << "no frame size goes with " << source.rate;
    }
}

INSTANTIATE_TEST_SUITE_P(, VideoEncoder, testing::ValuesIn(CodecsOf(IPreset::KEY_FILTER_VIDEO_CODEC)),
                         [](const auto& test) { return test.param; });

}  // namespace
}  // namespace Kestro::Conf
