#include <algorithm>
#include <cctype>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "Kestro/Conf/CodecKinds.h"

#include "tests/datahelpers/Laws.h"

// The laws, over every helper of the registry and values of every kind; and what holds for each as it is.

namespace Kestro::Conf {
namespace {

using Core::Dump;
using Core::NodeOf;
using Core::Property;
using Ratio = Property::Ratio;

/// Defaults that lie outside their own constraint: name and setting, and the reason.
const std::map<std::string, std::string> kOutsideByIntent = {
    {"hevc RateControl", "the bitrate is left to the program unless it is asked for"},
};

/// Lists with an order of their own: the usual first.
const std::set<std::string> kUnordered = {"44100 48000 32000 22050 24000 16000 ", "29.97 25 59.94 50 "};

std::string TestName(const testing::TestParamInfo<Key>& info) {
    std::string text = info.param.first + (info.param.second.empty() ? "" : "_" + info.param.second);
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return text;
}

/// Values of every kind, named "setting", the hard ones among them.
std::vector<Property> BadValues() {
    constexpr int64_t kMin = std::numeric_limits<int64_t>::min();
    constexpr int64_t kMax = std::numeric_limits<int64_t>::max();
    constexpr double kInf = std::numeric_limits<double>::infinity();
    std::vector<Property> values = {Property("setting"), NodeOf("setting", {{"setting", 1}})};
    const auto add = [&values](const auto&... value) { (values.emplace_back("setting", value), ...); };
    add(true, false, kMin, -1, 0, 1, 100'001, kMax);
    add(-kInf, -1e300, -0.5, 2.5, 1e300, kInf, std::numeric_limits<double>::quiet_NaN());
    add("", "nope", "1/0", "-9223372036854775808", "1e400", "25", "\xFF\xFE", "stereo", "s64");
    add(Ratio(kMin), Ratio(-25), Ratio(0), Ratio(1, kMax), Ratio(kMax));
    return values;
}

/// The codec node of a container's default stream; beside it stands the stream's type.
const Property& CodecOf(const Property& stream) {
    const std::size_t last = stream.Count() - 1;
    return stream[last];
}

std::string CodecIdPath(const Property& stream) {
    return IPreset::KEY_STREAMS + IPreset::INDEX + stream[IPreset::KEY_TYPE_ID].GetString() + Property::SEPARATOR +
           CodecOf(stream).Name() + Property::SEPARATOR + IFormatCodec::TAG_CODEC_ID;
}

class Helper : public testing::TestWithParam<Key> {
protected:
    const Subject subject_{GetParam().first, GetParam().second};
    const Property defaults_ = subject_.helper->GetDefaultSettings();

    /// In which the rules must find their way: an encoder's with itself, a container's with every codec.
    std::vector<Property> RuleTrees() const {
        const auto& [type, name] = GetParam();
        const bool isFormat = type == IPreset::KEY_FORMAT;
        if (!isFormat)
            return {Laws::RuleTree(CreateDataHelper("Format", "matroska")->GetDefaultSettings(), type, name)};
        std::vector<Property> trees;
        for (const Property& stream : defaults_[IPreset::KEY_STREAMS]) {
            for (const Property& codecId : Described(*subject_.constraints.at(CodecIdPath(stream))))
                trees.push_back(Laws::RuleTree(defaults_, CodecOf(stream).Name(), codecId.GetString()));
        }
        return trees;
    }
};

TEST_P(Helper, DefaultsLieInsideConstraintsThatDescribeThemselves) {
    const Property tree = RuleTrees().front();
    const Property source = Laws::SourceValues(subject_);
    Laws::OfTrees(tree);
    for (const auto& [key, constraint] : subject_.constraints) {
        SCOPED_TRACE(key);
        const Property* setting = defaults_.FindByPath(key);
        const bool isOptional = key == IFormatCodec::TAG_QUALITY;
        EXPECT_TRUE(setting != nullptr || isOptional || tree.FindByPath(key) != nullptr || source.ChildExists(key))
            << "there is no such setting";
        if (setting != nullptr) {
            const bool isOutside = kOutsideByIntent.contains(GetParam().second + " " + key);
            EXPECT_EQ(constraint->IsValid(*setting), !isOutside) << Dump(*setting);
        }
        for (const Property& value : Described(*constraint)) Laws::OfConstraints(*constraint, value);
        for (const Property& bad : BadValues()) Laws::OfConstraints(*constraint, bad);
    }
}

TEST_P(Helper, ListsAreInOrderAndHoldWhatTheyOffer) {
    std::vector<boost::intrusive_ptr<IPropertyConstraint>> constraints;
    for (const auto& [key, constraint] : subject_.constraints) constraints.push_back(constraint);
    for (const auto& [path, rule] : subject_.rules) constraints.push_back(rule->GetSecondConstraint());
    for (const auto& constraint : constraints) {
        const Property offered = Described(*constraint);
        SCOPED_TRACE(Dump(offered));
        int rises = 0;
        int falls = 0;
        for (std::size_t i = 0; i < offered.Count(); ++i) {
            const Property& value = offered[i];
            // A frame size is offered for a mode.
            EXPECT_TRUE(value.Type() == PropertyTypes::Node || constraint->IsValid(value));
            const bool isNumber = value.Type() == PropertyTypes::Int64 || value.Type() == PropertyTypes::Ratio;
            if (i == 0 || !isNumber) continue;
            rises += offered[i - 1].GetDouble() < value.GetDouble() ? 1 : 0;
            falls += offered[i - 1].GetDouble() > value.GetDouble() ? 1 : 0;
            EXPECT_FALSE(offered[i - 1] == value);
        }
        EXPECT_TRUE(rises == 0 || falls == 0 || kUnordered.contains(Names(*constraint)));
    }
}

TEST_P(Helper, RulesFindTheirWayAndTellWhatKeepsThemFromWhatBreaksThem) {
    const std::vector<Property> trees = RuleTrees();
    for (const auto& [path, rule] : subject_.rules) {
        SCOPED_TRACE(rule->GetFirstName() + " -> " + rule->GetSecondName());
        const auto condition = rule->GetFirstConstraint();
        const Property conditions = Described(*condition);
        const Property offered = Described(*rule->GetSecondConstraint());
        const bool isForCodecs = Laws::TagOf(rule->GetFirstName()) == IFormatCodec::TAG_CODEC_ID;
        std::vector<Property> values = BadValues();
        values.insert(values.end(), offered.begin(), offered.end());
        bool applies = false;
        bool kept = false;
        bool broken = false;
        for (Property tree : trees) {
            EXPECT_NO_THROW(rule->Validate(tree)) << Dump(tree);
            ASSERT_NE(tree.FindByPath(rule->GetFirstName()), nullptr);
            // A rule on a side of the frame needs one; codecs are what the tree is for.
            if (!isForCodecs && !conditions.IsEmpty())
                tree.ChildByPath(rule->GetFirstName()).CopyDataFrom(conditions[std::size_t{0}]);
            if (!condition->IsValid(tree.ChildByPath(rule->GetFirstName()))) {
                Laws::OfRules(*rule, tree);
                continue;
            }
            applies = true;
            ASSERT_NE(tree.FindByPath(rule->GetSecondName()), nullptr);
            for (const Property& value : values) {
                tree.ChildByPath(rule->GetSecondName()).CopyDataFrom(value);
                Laws::OfRules(*rule, tree);
                const auto holds = Laws::Answer([&, &rule = rule] { return rule->Validate(tree); });
                kept = kept || holds == true;
                broken = broken || holds == false;
            }
        }
        EXPECT_TRUE(applies || !isForCodecs) << "no codec ever brings the rule to bear";
        EXPECT_TRUE(!applies || (broken && (kept || !offered.IsEmpty())));
    }
}

TEST_P(Helper, AnswersAreSharedAndStayTheSame) {
    const Subject again(subject_.helper);
    EXPECT_EQ(again.constraints, subject_.constraints) << "the same objects";
    EXPECT_EQ(again.rules, subject_.rules) << "the same objects";
    const std::string before = subject_.Answers();
    ConstraintMap map{{"the caller's", nullptr}};
    if (!again.constraints.empty()) map[again.constraints.begin()->first] = nullptr;
    subject_.helper->FillConstraints(map);
    ConstraintMap expected = subject_.constraints;
    expected["the caller's"] = nullptr;
    EXPECT_EQ(map, expected) << "an earlier constraint of the same setting is replaced";
    ValidationRuleList list = subject_.rules;
    subject_.helper->FillValidationRules(list);
    EXPECT_EQ(list.size(), 2 * subject_.rules.size()) << "rules are appended";
    for (const Property& bad : BadValues()) {
        for (const Property& child : defaults_) {
            Property preset = defaults_;
            preset.SetChild(child.Name(), bad);
            Laws::OfSetups(subject_, preset, preset);
        }
    }
    EXPECT_EQ(Subject(subject_.helper).Answers(), before);
}

INSTANTIATE_TEST_SUITE_P(, Helper, testing::ValuesIn(AllKeys()), TestName);

class Codec : public Helper {
protected:
    const Property source_ = Laws::SourceValues(subject_);

    /// A correction brings in nothing but the bitrate, where that follows from the other settings.
    void ExpectCorrect(const Property& settings) const {
        Property corrected = settings;
        subject_.helper->CorrectFormatCodec(corrected);
        if (!settings.ChildExists(IFormatCodec::TAG_BITRATE)) corrected.RemoveChild(IFormatCodec::TAG_BITRATE);
        EXPECT_EQ(corrected, settings);
    }
};

TEST_P(Codec, ItsDefaultsAreAPresetThatNeedsNoCorrection) {
    EXPECT_EQ(defaults_.Name(), GetParam().first);
    EXPECT_EQ(defaults_[IFormatCodec::TAG_CODEC_ID].GetString(), GetParam().second);
    Property settings = source_;
    for (const Property& child : defaults_) settings.SetChild(child.Name(), child);
    ExpectCorrect(settings);

    settings = source_;
    subject_.helper->ApplyPresetSettings(defaults_, settings);
    ExpectCorrect(settings);
    for (const Property& child : source_) EXPECT_EQ(settings[child.Name()], child) << child.Name();
    for (const std::string& tag : {IFormatCodec::TAG_CODEC_ID, IFormatCodec::TAG_CODEC_OPTIONS_ENCODE}) {
        EXPECT_TRUE(subject_.name == IFormatCodec::CODEC_ID_AUTO || settings[tag] == defaults_[tag]);
    }
    for (const auto& [filter, implementation] : subject_.filters)
        EXPECT_NE(CreateDataHelper(filter, implementation), nullptr);
}

TEST_P(Codec, BadPresetsAreRefusedOrRepaired) {
    const std::string& options = IFormatCodec::TAG_CODEC_OPTIONS_ENCODE;
    const std::vector<std::string> tags = {"CodecId",    "RateControl",  "BitRate",     "Quality",
                                           "Multipass",  "Threads",      "UseAllCores", "EncodeOptions",
                                           "Fps",        "Width",        "Height",      "KeyInterval",
                                           "MaxBFrames", "BitsPerPixel", "Cover",       "ApprovedVbrOnly",
                                           "SampleRate", "Layout",       "SampleFmt"};
    for (const char* mode : {"cbr", "vbr", "cbr_auto"}) {
        Property whole = defaults_;
        whole.SetChild(IFormatCodec::TAG_BITRATE_MODE, mode);
        for (const char* tag : {"BitRate", "Quality"}) {
            if (!whole.ChildExists(tag)) whole.SetChild(tag, 1);
        }
        for (const std::string& tag : tags) {
            Property preset = whole;
            preset.RemoveChild(tag);
            Laws::OfSetups(subject_, preset, source_);
            Property settings = source_;
            settings.RemoveChild(tag);
            Laws::OfSetups(subject_, whole, settings);
            for (const Property& bad : BadValues()) {
                preset.SetChild(tag, bad);
                Laws::OfSetups(subject_, preset, source_);
                settings.SetChild(tag, bad);
                Laws::OfSetups(subject_, whole, settings);
                Property odd = whole;
                odd[options].SetChild(tag, bad);
                Laws::OfSetups(subject_, odd, source_);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, Codec,
                         testing::ValuesIn(KeysOf({IPreset::KEY_FILTER_AUDIO_CODEC, IPreset::KEY_FILTER_VIDEO_CODEC})),
                         TestName);

class Format : public Helper {};

TEST_P(Format, ItsStreamsHaveCodecsThatItTakes) {
    EXPECT_EQ(defaults_.Name(), IPreset::KEY_FORMAT);
    EXPECT_EQ(defaults_[IFormatFile::TAG_CONTAINER].GetString(), GetParam().second);
    std::size_t index = 0;
    for (const Property& stream : defaults_[IPreset::KEY_STREAMS]) {
        EXPECT_EQ(stream.Name(), std::to_string(index++));
        const std::string& codecKey = CodecOf(stream).Name();
        const auto codecs = subject_.constraints.at(CodecIdPath(stream));
        Property unknown("", "no such codec");
        EXPECT_TRUE(codecs->CorrectValue(unknown));
        EXPECT_EQ(unknown, CodecOf(stream)[IFormatCodec::TAG_CODEC_ID]);
        for (const Property& id : Described(*codecs)) {
            EXPECT_EQ(id.Name(), id.GetString());
            EXPECT_EQ(IsAudioCodec(id.GetString()), codecKey == IPreset::KEY_FILTER_AUDIO_CODEC) << Dump(id);
            EXPECT_EQ(IsVideoCodec(id.GetString()), codecKey == IPreset::KEY_FILTER_VIDEO_CODEC) << Dump(id);
        }
    }
    EXPECT_GT(index, 0U);
    EXPECT_TRUE(subject_.filters.empty());
    Property target("target", 1);
    subject_.helper->ApplyPresetSettings(defaults_, target);
    EXPECT_EQ(target, Property("target", 1));
}

TEST_P(Format, CorrectionsKeepItsRules) {
    for (const Property& tree : RuleTrees()) {
        for (const auto& [path, rule] : subject_.rules) {
            const std::string tag = Laws::TagOf(rule->GetSecondName());
            const bool isAudio = rule->GetFirstName().find(IPreset::KEY_FILTER_AUDIO_CODEC) != std::string::npos;
            Property codec(isAudio ? IFormatCodecAudio::TAG_FORMAT_CODEC_AUDIO
                                   : IFormatCodecVideo::TAG_FORMAT_CODEC_VIDEO);
            codec.CopyDataFrom(tree[isAudio ? IPreset::KEY_FILTER_AUDIO_CODEC : IPreset::KEY_FILTER_VIDEO_CODEC]);
            for (const Property& bad : BadValues()) {
                const bool isOption = tag == IFormatCodec::TAG_PROFILE;
                (isOption ? codec[IFormatCodec::TAG_CODEC_OPTIONS_ENCODE] : codec).SetChild(tag, bad);
                Laws::OfSetups(subject_, defaults_, codec);
                codec.SetChild(IFormatCodec::TAG_CODEC_TAG, bad);
                Laws::OfQueries(defaults_, codec);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, Format, testing::ValuesIn(KeysOf({IPreset::KEY_FORMAT})), TestName);

}  // namespace
}  // namespace Kestro::Conf
