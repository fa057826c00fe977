#include <gmock/gmock.h>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavutil/log.h>
}

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "Kestro/Conf/LayoutRecord.h"
#include "Kestro/Conf/SampleFmtRecord.h"
#include "Kestro/FFWrapper/BitrateLimits.h"
#include "Kestro/FFWrapper/ChannelLayoutMapping.h"
#include "Kestro/FFWrapper/EncoderCapabilities.h"
#include "Kestro/FFWrapper/EncoderNameFromCodecId.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResample.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/Proc/IResample.h"
#include "Kestro/Proc/IResize.h"

#include "Encoder.h"
#include "tests/Helpers.h"

// Whether FFmpeg's encoder takes what the helper of its codec offers, and just the frames that its rules accept.

namespace Kestro::Conf {
namespace {

using Core::NodeOf;
using Core::Property;

/// Values that the helper has and FFmpeg's encoder refuses or changes: they are right for the format, or for another
/// encoder.
struct EncoderException {
    const char* encoder;
    const char* setting;
    const char* values;
    const char* outcome;
    const char* why;
    unsigned libavcodec = 0;  ///< the one major version that does so; 0: all
};
constexpr const char* kPairs = "4:2:0 of whole pairs alone; the resizer gives no other";
constexpr EncoderException kExceptions[] = {
    {"aac", "EncodeOptions/Profile", "aac_he aac_he_v2 aac_ld aac_eld", "unreadable",
     "they name what FFmpeg's encoder cannot do"},
    {"aac", "Source", "16000/fltp/stereo 12000/fltp/stereo 11025/fltp/stereo 8000/fltp/stereo 7350/fltp/stereo",
     "another BitRate", "a frame holds 6144 bits a channel"},
    {"ac3", "Source", "48000/fltp/quad 48000/fltp/5.0 48000/fltp/5.1", "another Layout",
     "the format does not tell speakers behind from those at the side"},
    {"dca", "RateControl", "cbr", "refused", "256000 bit/s suffice for two channels up to 44100 Hz"},
    {"dca", "Source", "48000/s32/stereo", "refused", "the same"},
    {"wmav2", "Quality", "100", "no effect", "FFmpeg's encoder has constant bitrate alone"},
    {"dvvideo", "BitRate", "800000000", "no effect", "a frame of each size has its one length"},
    {"jpeg2000", "BitRate", "800000000", "no effect", "FFmpeg's encoder goes by quality alone"},
    {"jpegls", "BitRate", "800000000", "no effect", "FFmpeg's encoder is lossless"},
    {"jpegls", "Quality", "100", "no effect", "FFmpeg's encoder is lossless"},
    {"libsvtav1", "BitRate", "400050000 800000000", "refused", "the encoder ends at 100000000 bit/s"},
    {"libx264", "EncodeOptions/Preset", "ultrafast", "another Profile", "it does without all that sets Main apart"},
    {"libx264", "EncodeOptions/Tune", "fastdecode", "another Profile", "it does without all that sets Main apart"},
    {"prores_ks", "BitRate", "800000000", "no effect", "FFmpeg's encoder goes by quality alone"},
    {"libsvtav1", "Source", "177/144/25/1 176/145/25/1", "refused", kPairs},
    {"pgmyuv", "Source", "177/144/25/1 176/145/25/1", "refused", kPairs},
    {"utvideo", "Source", "177/144/25/1 176/145/25/1", "refused", kPairs},
    {"wmv2", "Source", "177/144/25/1", "refused", "pairs of pixels in a line"},
};

/// What a test of an encoder finds when nothing but its exceptions comes up: `setting=value: outcome`.
std::vector<std::string> ExpectedOf(const std::string& encoder, bool ofSources) {
    std::vector<std::string> findings;
    for (const EncoderException& row : kExceptions) {
        if (row.encoder != encoder || (row.setting == std::string("Source")) != ofSources) continue;
        if (row.libavcodec != 0 && row.libavcodec != avcodec_version() >> 16) continue;
        std::istringstream values(row.values);
        for (std::string value; values >> value;) findings.push_back(row.setting + ("=" + value) + ": " + row.outcome);
    }
    return findings;
}

/// Codecs whose encoder keeps to the bitrate within a short clip.
bool HasConstantBitrate(const std::string& id) {
    return id.starts_with("pcm_") ||
           std::ranges::count(std::vector<std::string>{"ac3", "amr_nb", "dts", "mp2", "mp3", "wmav2"}, id) != 0;
}

class Encoder : public testing::TestWithParam<Key> {
protected:
    void SetUp() override {
        if (encoder_.empty()) GTEST_SKIP() << "no encoder for " << GetParam().second << " in the installed FFmpeg";
        av_log_set_level(AV_LOG_QUIET);
        setenv("SVT_LOG", "0", 1);
        if (!usual_.ChildExists(IFormatCodec::TAG_QUALITY))
            usual_.SetChild(IFormatCodec::TAG_QUALITY, IFormatCodec::MAX_QUALITY);
        if (isAudio_) {
            CollectSounds();
        } else {
            CollectFrames();
        }
        const auto first = std::ranges::find_if(sources_, [&](const Property& s) { return IsAccepted(usual_, s); });
        ASSERT_NE(first, sources_.end());
        usualSource_ = *first;
    }

    /// 48000 Hz stereo or what is nearest to it; then each value that the resampler may give, with the others as usual.
    void CollectSounds() {
        const auto formats = FFWrapper::EncoderCapabilities::Find(encoder_)->sampleFormats;
        Property usual = NodeOf(
            "",
            {{"SampleRate", 48000}, {"SampleFmt", SampleFmtRecord::Find(formats.front())->name}, {"Layout", "stereo"}});
        for (const auto& [tag, allowed] : accepted_) allowed->CorrectValue(usual[tag]);
        sources_ = {usual};
        for (const auto& [tag, allowed] : accepted_) {
            for (const Property& value : Described(*allowed)) {
                if (value == usual[tag]) continue;
                sources_.push_back(usual);
                sources_.back()[tag].CopyDataFrom(value);
            }
        }
    }

    /// The sizes that the helper lists; else a usual one, the same with an odd side, and with a side at each end of its
    /// range. Each at every rate that the helper lists.
    void CollectFrames() {
        std::vector<std::pair<int64_t, int64_t>> sizes;
        std::vector<std::pair<int64_t, int64_t>> otherSizes = {{176, 144}, {177, 144}, {176, 145}};
        for (const auto& [path, rule] : subject_.rules) {
            for (const Property& value : Described(*rule->GetSecondConstraint())) {
                if (path.ends_with(Proc::IResize::FRAME_SIZE_MODE))
                    sizes.emplace_back(value["Width"].GetInt64(), value["Height"].GetInt64());
                if (path.ends_with("Width")) otherSizes.emplace_back(value.GetInt64(), 144);
                if (path.ends_with("Height")) otherSizes.emplace_back(176, value.GetInt64());
            }
        }
        const auto rates = subject_.constraints.find(IFormatCodecVideo::TAG_FPS);
        const Property listed =
            rates != subject_.constraints.end() ? Described(*rates->second) : NodeOf("", {{"25", Property::Ratio(25)}});
        for (const auto& [width, height] : sizes.empty() ? otherSizes : sizes) {
            for (const Property& rate : listed)
                sources_.push_back(NodeOf("", {{"Width", width}, {"Height", height}, {"Fps", rate.GetRatio()}}));
        }
    }

    bool IsAccepted(const Property& preset, const Property& source) const {
        Property tree = NodeOf("", {preset});
        if (isAudio_) {
            tree.SetChild(Proc::IFilterResample::CLASS_ID).SetChild(Proc::IResample::CLASS_ID, source);
        } else {
            Proc::SettingsResizer resizer;
            resizer.frameSizeMode = Proc::SettingsResizer::FrameSizeMode::Custom;
            resizer.width = source["Width"].GetInt64();
            resizer.height = source["Height"].GetInt64();
            tree.SetChild(Proc::IFilterResize::CLASS_ID, Proc::IFilterResize::Settings2Property(resizer));
            tree.SetChild(Proc::IFilterFrameRate::CLASS_ID,
                          Proc::IFilterFrameRate::MakeSettings(source["Fps"].GetRatio()));
        }
        return std::ranges::all_of(subject_.rules, [&](const auto& entry) { return entry.second->Validate(tree); });
    }

    /// The node that the encoder is set up by.
    Property CodecOf(const Property& preset, const Property& source) const {
        Property codec = source;
        subject_.helper->ApplyPresetSettings(preset, codec);
        subject_.helper->CorrectFormatCodec(codec);
        // Packed and planar formats hold the same samples; the encoder is given the one that it takes.
        if (const SampleFmtRecord* given = isAudio_ ? SampleFmtRecord::Find(codec["SampleFmt"].GetString()) : nullptr) {
            const auto formats = FFWrapper::EncoderCapabilities::Find(encoder_)->sampleFormats;
            if (std::ranges::find(formats, given->code) == formats.end())
                codec["SampleFmt"] = std::string(SampleFmtRecord::Find(given->alternative)->name);
        }
        if (preset.ChildExists(IFormatCodec::TAG_GLOBAL_HEADER)) codec.SetChild(IFormatCodec::TAG_GLOBAL_HEADER, true);
        return codec;
    }

    /// What the encoder made of that node; nothing when it did as the settings say.
    std::string Outcome(Property codec, const std::optional<Encoded>& encoded) const {
        if (!encoded) return "refused";
        // The bitrate of PCM is that of the samples given: those of 24 bits come in 32.
        if (Property* rate = GetParam().second.find("24") != std::string::npos ? &codec["BitRate"] : nullptr)
            *rate = rate->GetInt64() * 24 / 32;
        if (encoded->decoded == 0) return "unreadable";
        if (!isAudio_ && encoded->decoded != encoded->sent) return "another number of frames";
        for (const Property& found : encoded->settings) {
            const std::string& tag = found.Name();
            // Where the helper does not list rates, it is the container that has the rate.
            if (tag == IFormatCodecVideo::TAG_FPS && !subject_.constraints.contains(tag)) continue;
            const Property& asked =
                tag == IFormatCodec::TAG_PROFILE ? codec[IFormatCodec::TAG_CODEC_OPTIONS_ENCODE] : codec;
            if (asked.ChildExists(tag) && asked[tag] != found) return "another " + tag;
        }
        const std::string& bitrate = IFormatCodec::TAG_BITRATE;
        if (!isAudio_ || !HasConstantBitrate(GetParam().second) || !encoded->settings.ChildExists(bitrate)) return {};
        constexpr double kRounding = 0.01;
        const double off = std::abs(encoded->bitrate / codec[bitrate].GetDouble() - 1.0);
        return off < kRounding ? "" : "another " + bitrate;
    }

    const bool isAudio_ = GetParam().first == IPreset::KEY_FILTER_AUDIO_CODEC;
    const std::string encoder_ = FFWrapper::EncoderNameFromCodecId(GetParam().second);
    const Subject subject_{GetParam().first, GetParam().second};
    /// By tag: what the resampler may give.
    const std::map<std::string, boost::intrusive_ptr<IPropertyConstraint>> accepted_ = [this] {
        std::map<std::string, boost::intrusive_ptr<IPropertyConstraint>> accepted;
        for (const char* tag : {"SampleRate", "SampleFmt", "Layout"}) {
            if (const auto allowed = subject_.Requirement(std::string("AudioResample/Resampler/") + tag))
                accepted[tag] = allowed;
        }
        return accepted;
    }();
    Property usual_ = subject_.helper->GetDefaultSettings();
    std::vector<Property> sources_;
    Property usualSource_;
};

TEST_P(Encoder, TakesEachValueWithTheOthersAsByDefault) {
    const AVCodecDescriptor* descriptor = avcodec_descriptor_get_by_name(GetParam().second.c_str());
    std::vector<std::string> findings;
    for (const auto& [path, constraint] : subject_.constraints) {
        if (path == IFormatCodecVideo::TAG_FPS) continue;  // goes by the frame size
        Property preset = usual_;
        const auto canUse = [&](const std::string& mode) {
            const auto modes = subject_.constraints.find(IFormatCodec::TAG_BITRATE_MODE);
            return modes != subject_.constraints.end() &&
                   modes->second->IsValid(preset.SetChild(IFormatCodec::TAG_BITRATE_MODE, mode));
        };
        if (path == IFormatCodec::TAG_QUALITY && !canUse(IFormatCodec::TAG_BITRATE_MODE_VBR)) continue;
        if (path == IFormatCodec::TAG_BITRATE && !canUse(IFormatCodec::TAG_BITRATE_MODE_CBR)) {
            preset = usual_;
            preset[IFormatCodec::TAG_CODEC_OPTIONS_ENCODE].SetChild(IFormatCodecVideo::TAG_APPROVED_VBR_MODE_ONLY,
                                                                    true);
        }
        if (preset.FindByPath(path) == nullptr) continue;
        int64_t least = 0;
        for (const Property& value : Described(*constraint)) {
            preset.ChildByPath(path).CopyDataFrom(value);
            const Property codec = CodecOf(preset, usualSource_);
            const auto encoded = Encode(encoder_, codec);
            std::string outcome = Outcome(codec, encoded);
            if (encoded && value.Name() == "minValue") least = encoded->bytes;
            const bool isLossy = (descriptor->props & AV_CODEC_PROP_LOSSY) != 0;
            const bool isMore = value.Name() != "maxValue" || !isLossy || (encoded && encoded->bytes > least);
            if (outcome.empty() && !isMore) outcome = "no effect";
            if (!outcome.empty()) findings.push_back(path + "=" + Core::PropertyValueToString(value) + ": " + outcome);
        }
    }
    EXPECT_THAT(findings, testing::UnorderedElementsAreArray(ExpectedOf(encoder_, false)));
}

TEST_P(Encoder, TakesJustTheSourcesThatTheRulesAccept) {
    const std::string path = IFormatCodec::TAG_CODEC_OPTIONS_ENCODE + Property::SEPARATOR + IFormatCodec::TAG_PROFILE;
    const auto profiles = subject_.constraints.find(path);
    const bool hasProfiles = !isAudio_ && profiles != subject_.constraints.end();
    std::vector<std::string> findings;
    for (const Property& profile : hasProfiles ? Described(*profiles->second) : NodeOf("", {{"usual", ""}})) {
        Property preset = usual_;
        if (hasProfiles) preset.ChildByPath(path).CopyDataFrom(profile);
        for (const Property& source : sources_) {
            const Property codec = CodecOf(preset, source);
            const std::string outcome = Outcome(codec, Encode(encoder_, codec));
            const bool isAccepted = IsAccepted(preset, source);
            if (isAccepted == outcome.empty()) continue;
            std::string text = "Source";
            for (const Property& value : source)
                text += (text == "Source" ? "=" : "/") + Core::PropertyValueToString(value);
            findings.push_back(text + (hasProfiles ? "/" + profile.GetString() : "") + ": " +
                               (isAccepted ? outcome : "taken"));
        }
    }
    EXPECT_THAT(findings, testing::UnorderedElementsAreArray(ExpectedOf(encoder_, true)));
    for (const Property& source : sources_) {
        const auto fits = [&](const Property& other) {
            return (isAudio_ || other["Fps"] == source["Fps"]) && IsAccepted(usual_, other);
        };
        ASSERT_TRUE(std::ranges::any_of(sources_, fits)) << "no frame size goes with " << Core::Dump(source);
    }
}

std::string TestName(const testing::TestParamInfo<Key>& info) { return info.param.second; }
std::vector<Key> CodecKeys() {
    std::vector<Key> keys = KeysOf({IPreset::KEY_FILTER_AUDIO_CODEC, IPreset::KEY_FILTER_VIDEO_CODEC});
    std::erase(keys, Key(IPreset::KEY_FILTER_AUDIO_CODEC, IFormatCodec::CODEC_ID_AUTO));
    return keys;
}
INSTANTIATE_TEST_SUITE_P(, Encoder, testing::ValuesIn(CodecKeys()), TestName);

/// Encoders whose bitrates go by sample rate and layout, which the helper knows.
class LimitedEncoder : public Encoder {};

TEST_P(LimitedEncoder, TakesTheCorrectedBitrateAtEveryRateAndLayout) {
    const bool isConstant = HasConstantBitrate(GetParam().second);  // it clamps without a word
    const auto& bitrates = subject_.constraints.at(IFormatCodec::TAG_BITRATE);
    Property codec = CodecOf(usual_, usualSource_);
    for (const Property& rate : Described(*accepted_.at(IFormatCodecAudio::TAG_SAMPLE_RATE))) {
        codec[IFormatCodecAudio::TAG_SAMPLE_RATE].CopyDataFrom(rate);
        for (const Property& layout : Described(*accepted_.at(IFormatCodecAudio::TAG_LAYOUT))) {
            codec[IFormatCodecAudio::TAG_LAYOUT].CopyDataFrom(layout);
            for (const Property& bitrate : Described(*bitrates)) {
                Property corrected = codec;
                corrected[IFormatCodec::TAG_BITRATE].CopyDataFrom(bitrate);
                subject_.helper->CorrectFormatCodec(corrected);
                EXPECT_TRUE(bitrates->IsValid(corrected[IFormatCodec::TAG_BITRATE]));
                EXPECT_TRUE(isConstant ? Outcome(corrected, Encode(encoder_, corrected)).empty()
                                       : Opens(encoder_, corrected))
                    << Core::Dump(corrected);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, LimitedEncoder,
                         testing::Values(Key(IPreset::KEY_FILTER_AUDIO_CODEC, "mp3"),
                                         Key(IPreset::KEY_FILTER_AUDIO_CODEC, "vorbis")),
                         TestName);

TEST(AudioEncoders, DtsBitratesEndWhereTheEncodersDo) {
    const std::string encoder = FFWrapper::EncoderNameFromCodecId("dts");
    if (encoder.empty()) GTEST_SKIP() << "no encoder for dts in the installed FFmpeg";
    const auto capabilities = FFWrapper::EncoderCapabilities::Find(encoder);
    const Subject subject(IPreset::KEY_FILTER_AUDIO_CODEC, "dts");
    Property codec = subject.helper->GetDefaultSettings();
    codec.SetChild(IFormatCodecAudio::TAG_SAMPLE_FORMAT, "s32");
    const auto opens = [&](int64_t bitrate) {
        codec.SetChild(IFormatCodec::TAG_BITRATE, bitrate);
        return Opens(encoder, codec);
    };
    const auto accepts = [&](int64_t bitrate) {
        return subject.constraints.at(IFormatCodec::TAG_BITRATE)->IsValid(Property("", bitrate));
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
            EXPECT_TRUE(opens(limits->lowest) && accepts(limits->lowest) && !opens(limits->lowest - 1))
                << Core::Dump(codec);
            lowest = std::min(lowest, limits->lowest);
            if (opens(limits->highest)) highest = std::max(highest, limits->highest);
        }
    }
    EXPECT_TRUE(accepts(highest) && !accepts(lowest - 1) && !accepts(highest + 1) && !opens(highest + 1));
}

}  // namespace
}  // namespace Kestro::Conf
