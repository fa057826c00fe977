#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "Kestro/Conf/CodecKinds.h"
#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Exception.h"
#include "Kestro/Proc/IFilterAudioFormatter.h"
#include "Kestro/Proc/IFilterAudioVolume.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResample.h"
#include "Kestro/Proc/IFilterResize.h"

#include "tests/CallLog.h"
#include "tests/Described.h"
#include "tests/Trees.h"

// What holds for every helper of the registry, whatever it describes.

namespace Kestro::Conf {
namespace {

using Core::Dump;
using Core::NodeOf;
using Core::Property;
using Ratio = Property::Ratio;

const std::string kFilters[] = {Proc::IFilterResample::CLASS_ID, Proc::IFilterAudioVolume::CLASS_ID,
                                Proc::IFilterAudioFormatter::CLASS_ID, Proc::IFilterFrameRate::CLASS_ID,
                                Proc::IFilterResize::CLASS_ID};

/// Defaults that lie outside their own constraint: "type name setting", and the reason.
const std::map<std::string, std::string> kOutsideByIntent = {
    {"VideoCodec hevc RateControl", "the bitrate is left to the program unless it is asked for"},
};

/// Type and name in the registry.
using Key = std::pair<std::string, std::string>;

std::vector<Key> KeysOf(const std::vector<std::string>& types) {
    std::vector<Key> keys;
    for (const std::string& type : types) {
        for (const auto& [name, helper] : GetAvailableDataHelpers(type)) keys.emplace_back(type, name);
    }
    return keys;
}

const std::vector<Key> kFormats = KeysOf({IPreset::KEY_FORMAT});
const std::vector<Key> kCodecs = KeysOf({IPreset::KEY_FILTER_AUDIO_CODEC, IPreset::KEY_FILTER_VIDEO_CODEC});

std::vector<Key> AllKeys() {
    std::vector<Key> keys = kFormats;
    keys.insert(keys.end(), kCodecs.begin(), kCodecs.end());
    for (const std::string& filter : kFilters) keys.emplace_back(filter, "");
    return keys;
}

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

ConstraintMap Constraints(const IDataHelper& helper) {
    ConstraintMap constraints;
    helper.FillConstraints(constraints);
    return constraints;
}

ValidationRuleList Rules(const IDataHelper& helper) {
    ValidationRuleList rules;
    helper.FillValidationRules(rules);
    return rules;
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

/// The tree that rules run over, made of a container's default settings, the filters' and the encoders'; the codec of
/// one kind of stream is the given one.
Property RuleTree(const Property& format, const std::string& codecKey, const std::string& codecId) {
    Property root("root");
    root.SetChild(IPreset::KEY_STREAMS, format[IPreset::KEY_STREAMS]);
    for (const Property& stream : format[IPreset::KEY_STREAMS]) {
        const Property& given = CodecOf(stream);
        const std::string& id = given.Name() == codecKey ? codecId : given[IFormatCodec::TAG_CODEC_ID].GetString();
        const Key key(given.Name(), id);
        Property& codec = root.SetChild(given.Name());
        if (std::find(kCodecs.begin(), kCodecs.end(), key) != kCodecs.end()) {
            codec.CopyDataFrom(CreateDataHelper(given.Name(), id)->GetDefaultSettings());
        }
        for (const Property& child : given) codec.SetChild(child.Name(), child);
        codec.SetChild(IFormatCodec::TAG_CODEC_ID, id);
        root[IPreset::KEY_STREAMS][stream.Name()].SetChild(given.Name(), codec);
    }
    for (const std::string& filter : kFilters)
        root.SetChild(filter, CreateDataHelper(filter, "")->GetDefaultSettings());
    root.SetChild(IPreset::KEY_FORMAT, format);
    return root;
}

/// The trees in which a helper's rules must find their way: an encoder's with itself, a container's with every codec.
std::vector<Property> RuleTrees(const Key& key, const IDataHelper& helper) {
    const auto matroska = CreateDataHelper(IPreset::KEY_FORMAT, IFormatFile::FORMAT_MATROSKA)->GetDefaultSettings();
    if (key.first != IPreset::KEY_FORMAT) return {RuleTree(matroska, key.first, key.second)};
    const Property own = helper.GetDefaultSettings();
    std::vector<Property> trees;
    for (const Property& stream : own[IPreset::KEY_STREAMS]) {
        for (const Property& codecId : Described(*Constraints(helper).at(CodecIdPath(stream)))) {
            trees.push_back(RuleTree(own, CodecOf(stream).Name(), codecId.GetString()));
        }
    }
    return trees;
}

/// A codec node with the values of a source, which the encoder's rules accept.
Property SourceValues(const Key& key, const IDataHelper& helper) {
    if (key.first == IPreset::KEY_FILTER_VIDEO_CODEC) {
        return NodeOf(key.first, {{"Width", 640}, {"Height", 480}, {"Fps", Ratio(25)}});
    }
    Property node = NodeOf(key.first, {{"SampleRate", 48000}, {"Layout", "stereo"}, {"SampleFmt", "s16"}});
    for (const auto& [path, rule] : Rules(helper)) {
        for (const char* tag : {"SampleRate", "Layout", "SampleFmt"}) {
            if (!rule->GetSecondName().ends_with(Property::SEPARATOR + tag)) continue;
            const auto allowed = rule->GetSecondConstraint();
            if (allowed->IsValid(node[tag])) continue;
            const Property values = Described(*allowed);
            if (values.Count() != 0) node.SetChild(tag, *values.begin());
        }
    }
    return node;
}

class Helper : public testing::TestWithParam<Key> {
protected:
    const boost::intrusive_ptr<const IDataHelper> helper_ = CreateDataHelper(GetParam().first, GetParam().second);
    const Property defaults_ = helper_->GetDefaultSettings();
    const ConstraintMap constraints_ = Constraints(*helper_);
    const ValidationRuleList rules_ = Rules(*helper_);

    /// All that the helper says of itself.
    std::string Answers() const {
        std::string text = Dump(helper_->GetDefaultSettings());
        const auto add = [&text](const std::string& key, const IPropertyConstraint& constraint) {
            text += "\n" + key + " [" + CallLog::Of(constraint) + constraint.GetDescription("") + "]";
        };
        FilterList filters;
        helper_->GetRequiredFilters(filters);
        for (const auto& [filter, implementation] : filters) text += "\n" + filter + " " + implementation;
        for (const auto& [key, constraint] : Constraints(*helper_)) add(key, *constraint);
        for (const auto& [path, rule] : Rules(*helper_)) {
            add(path + ": " + rule->GetFirstName(), *rule->GetFirstConstraint());
            add(rule->GetSecondName(), *rule->GetSecondConstraint());
        }
        return text;
    }
};

TEST_P(Helper, DefaultsLieInsideConstraintsThatDescribeThemselves) {
    const Property tree = RuleTrees(GetParam(), *helper_).front();
    const Property source = SourceValues(GetParam(), *helper_);
    for (const auto& [key, constraint] : constraints_) {
        SCOPED_TRACE(key);
        ASSERT_NE(constraint, nullptr);
        const Property* setting = defaults_.FindByPath(key);
        const bool isOptional = key == IFormatCodec::TAG_QUALITY;
        EXPECT_TRUE(setting != nullptr || isOptional || tree.FindByPath(key) != nullptr || source.ChildExists(key))
            << "there is no such setting";
        if (setting != nullptr) {
            const bool isOutside = kOutsideByIntent.contains(GetParam().first + " " + GetParam().second + " " + key);
            EXPECT_EQ(constraint->IsValid(*setting), !isOutside) << Dump(*setting);
        }
        for (const Property& value : Described(*constraint)) {
            if (value.Type() == PropertyTypes::Node) continue;  // a frame size, which is offered for a mode
            EXPECT_TRUE(constraint->IsValid(value)) << Dump(value);
        }
    }
}

TEST_P(Helper, RulesAnswerForWholePresets) {
    const std::vector<Property> trees = RuleTrees(GetParam(), *helper_);
    for (const auto& [path, rule] : rules_) {
        SCOPED_TRACE(rule->GetFirstName() + " -> " + rule->GetSecondName());
        bool applies = false;
        bool resolves = false;
        for (const Property& tree : trees) {
            EXPECT_NO_THROW(rule->Validate(tree)) << Dump(tree);
            const Property* first = tree.FindByPath(rule->GetFirstName());
            ASSERT_NE(first, nullptr);
            const Property* second = tree.FindByPath(rule->GetSecondName());
            resolves = resolves || second != nullptr;
            if (!rule->GetFirstConstraint()->IsValid(*first)) continue;
            applies = true;
            EXPECT_NE(second, nullptr) << Dump(*first);
        }
        EXPECT_TRUE(resolves);
        const bool isForCodecs = rule->GetFirstName().ends_with(Property::SEPARATOR + IFormatCodec::TAG_CODEC_ID);
        EXPECT_TRUE(applies || !isForCodecs) << "no codec ever brings the rule to bear";
    }
}

TEST_P(Helper, RulesTellWhatKeepsThemFromWhatBreaksThem) {
    for (const Property& whole : RuleTrees(GetParam(), *helper_)) {
        for (const auto& [path, rule] : rules_) {
            SCOPED_TRACE(rule->GetFirstName() + " -> " + rule->GetSecondName());
            Property tree = whole;
            const auto condition = rule->GetFirstConstraint();
            // A rule on a side of the frame needs one; codecs are what the tree is for.
            const bool isForCodecs = rule->GetFirstName().ends_with(Property::SEPARATOR + IFormatCodec::TAG_CODEC_ID);
            const Property conditions = Described(*condition);
            if (!isForCodecs && conditions.Count() != 0)
                tree.ChildByPath(rule->GetFirstName()).CopyDataFrom(conditions[std::size_t{0}]);
            const bool applies = condition->IsValid(tree.ChildByPath(rule->GetFirstName()));
            if (tree.FindByPath(rule->GetSecondName()) == nullptr) continue;
            std::vector<Property> values = BadValues();
            for (const Property& value : Described(*rule->GetSecondConstraint())) values.push_back(value);
            bool kept = false;
            bool broken = false;
            for (const Property& value : values) {
                if (value.Type() == PropertyTypes::Node) continue;
                bool isAccepted = false;
                try {
                    isAccepted = rule->GetSecondConstraint()->IsValid(value);
                } catch (const Exception&) {  // a value of another kind
                    continue;
                }
                tree.ChildByPath(rule->GetSecondName()).CopyDataFrom(value);
                EXPECT_EQ(rule->Validate(tree), isAccepted || !applies) << Dump(value);
                (isAccepted ? kept : broken) = true;
            }
            EXPECT_TRUE(broken);
            EXPECT_TRUE(kept || !Described(*rule->GetSecondConstraint()).IsEmpty());
        }
    }
}

TEST_P(Helper, ConstraintsTakeAnyValue) {
    for (const auto& [key, constraint] : constraints_) {
        for (const Property& bad : BadValues()) {
            SCOPED_TRACE(key + " of " + Dump(bad));
            try {
                constraint->IsValid(bad);
            } catch (const Exception&) {  // the only family that may come
            }
            Property value = bad;
            if (constraint->CorrectValue(value)) {
                EXPECT_TRUE(constraint->IsValid(value)) << Dump(value);
                EXPECT_EQ(value.Name(), "setting");
            } else {
                EXPECT_EQ(Dump(value), Dump(bad));
                EXPECT_EQ(value.Type(), bad.Type());
            }
        }
    }
}

TEST_P(Helper, AnswersAreSharedAndStayTheSame) {
    EXPECT_EQ(Constraints(*helper_), constraints_) << "the same objects";
    EXPECT_EQ(Rules(*helper_), rules_) << "the same objects";
    const std::string before = Answers();

    ConstraintMap map{{"the caller's", nullptr}};
    if (!constraints_.empty()) map[constraints_.begin()->first] = nullptr;
    helper_->FillConstraints(map);
    ConstraintMap expected = constraints_;
    expected["the caller's"] = nullptr;
    EXPECT_EQ(map, expected) << "an earlier constraint of the same setting is replaced";
    ValidationRuleList list = rules_;
    helper_->FillValidationRules(list);
    EXPECT_EQ(list.size(), 2 * rules_.size()) << "rules are appended";

    for (const Property& bad : BadValues()) {
        for (const Property& child : defaults_) {
            Property preset = defaults_;
            preset.SetChild(child.Name(), bad);
            Property settings = preset;
            try {
                helper_->CorrectFormatCodec(settings);
                helper_->ApplyPresetSettings(preset, settings);
            } catch (const Exception&) {  // what a bad value deserves
            }
        }
    }
    EXPECT_EQ(Answers(), before);
}

INSTANTIATE_TEST_SUITE_P(, Helper, testing::ValuesIn(AllKeys()), TestName);

class Codec : public Helper {
protected:
    const Property source_ = SourceValues(GetParam(), *helper_);
    /// The automatic choice, which leaves everything as it is.
    const bool isAuto_ = GetParam().second == IFormatCodec::CODEC_ID_AUTO;

    /// A correction brings in nothing but the bitrate, where that follows from the other settings.
    void ExpectCorrect(const Property& settings) const {
        Property corrected = settings;
        helper_->CorrectFormatCodec(corrected);
        Property again = corrected;
        helper_->CorrectFormatCodec(again);
        EXPECT_EQ(again, corrected);
        if (!settings.ChildExists(IFormatCodec::TAG_BITRATE)) corrected.RemoveChild(IFormatCodec::TAG_BITRATE);
        EXPECT_EQ(corrected, settings);
    }

    /// The preset is refused, or what comes of it is inside the constraints.
    void ExpectRefusedOrRepaired(const Property& preset, Property settings) const {
        try {
            helper_->ApplyPresetSettings(preset, settings);
            helper_->CorrectFormatCodec(settings);
        } catch (const Exception& e) {
            EXPECT_STRNE(e.what(), "");
            return;
        }
        Property again = settings;
        helper_->CorrectFormatCodec(again);
        EXPECT_EQ(Dump(again), Dump(settings)) << "nothing is left to correct";
        if (isAuto_) return;
        for (const char* tag : {"RateControl", "BitRate", "Quality"}) {
            const auto found = constraints_.find(tag);
            if (found == constraints_.end() || !settings.ChildExists(tag)) continue;
            // Without a default there is nothing to go back to.
            if (!defaults_.ChildExists(tag) || settings[tag] == defaults_[tag]) continue;
            EXPECT_TRUE(found->second->IsValid(settings[tag])) << Dump(settings);
        }
    }
};

TEST_P(Codec, ItsDefaultsAreAPresetThatNeedsNoCorrection) {
    EXPECT_EQ(defaults_.Name(), GetParam().first);
    EXPECT_EQ(defaults_[IFormatCodec::TAG_CODEC_ID].GetString(), GetParam().second);
    Property settings = source_;
    for (const Property& child : defaults_) settings.SetChild(child.Name(), child);
    ExpectCorrect(settings);

    settings = source_;
    helper_->ApplyPresetSettings(defaults_, settings);
    ExpectCorrect(settings);
    for (const Property& child : source_) EXPECT_EQ(settings[child.Name()], child) << child.Name();
    for (const std::string& tag : {IFormatCodec::TAG_CODEC_ID, IFormatCodec::TAG_CODEC_OPTIONS_ENCODE}) {
        if (isAuto_) continue;
        EXPECT_EQ(settings[tag], defaults_[tag]);
    }
    FilterList filters;
    helper_->GetRequiredFilters(filters);
    for (const auto& [filter, implementation] : filters) EXPECT_NE(CreateDataHelper(filter, ""), nullptr);
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
            SCOPED_TRACE(std::string(mode) + ", " + tag);
            Property preset = whole;
            preset.RemoveChild(tag);
            ExpectRefusedOrRepaired(preset, source_);
            Property settings = source_;
            settings.RemoveChild(tag);
            ExpectRefusedOrRepaired(whole, settings);
            for (const Property& bad : BadValues()) {
                SCOPED_TRACE(Dump(bad));
                preset.SetChild(tag, bad);
                ExpectRefusedOrRepaired(preset, source_);
                settings.SetChild(tag, bad);
                ExpectRefusedOrRepaired(whole, settings);
                Property odd = whole;
                odd[options].SetChild(tag, bad);
                ExpectRefusedOrRepaired(odd, source_);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, Codec, testing::ValuesIn(kCodecs), TestName);

class Format : public Helper {};

TEST_P(Format, ItsStreamsHaveCodecsThatItTakes) {
    EXPECT_EQ(defaults_.Name(), IPreset::KEY_FORMAT);
    EXPECT_EQ(defaults_[IFormatFile::TAG_CONTAINER].GetString(), GetParam().second);
    std::size_t index = 0;
    for (const Property& stream : defaults_[IPreset::KEY_STREAMS]) {
        EXPECT_EQ(stream.Name(), std::to_string(index++));
        const std::string& codecKey = CodecOf(stream).Name();
        const auto codecs = constraints_.at(CodecIdPath(stream));
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
    FilterList filters;
    helper_->GetRequiredFilters(filters);
    EXPECT_TRUE(filters.empty());
    Property target("target", 1);
    helper_->ApplyPresetSettings(defaults_, target);
    EXPECT_EQ(target, Property("target", 1));
}

TEST_P(Format, CorrectionsKeepItsRules) {
    const std::set<std::string> corrected = {"Fps", "Cover", "Profile", "SampleRate", "Layout"};
    for (const Property& tree : RuleTrees(GetParam(), *helper_)) {
        for (const auto& [path, rule] : rules_) {
            const std::string& second = rule->GetSecondName();
            const std::string tag = second.substr(second.rfind(Property::SEPARATOR) + 1);
            const bool isAudio = rule->GetFirstName().find(IPreset::KEY_FILTER_AUDIO_CODEC) != std::string::npos;
            const bool applies = rule->GetFirstConstraint()->IsValid(tree.ChildByPath(rule->GetFirstName()));
            if (!corrected.contains(tag)) continue;
            for (const Property& bad : BadValues()) {
                SCOPED_TRACE(second + " " + Dump(bad));
                Property codec(isAudio ? IFormatCodecAudio::TAG_FORMAT_CODEC_AUDIO
                                       : IFormatCodecVideo::TAG_FORMAT_CODEC_VIDEO);
                codec.CopyDataFrom(tree[isAudio ? IPreset::KEY_FILTER_AUDIO_CODEC : IPreset::KEY_FILTER_VIDEO_CODEC]);
                const auto holder = [&](Property& node) -> Property& {
                    return tag == IFormatCodec::TAG_PROFILE ? node[IFormatCodec::TAG_CODEC_OPTIONS_ENCODE] : node;
                };
                holder(codec).SetChild(tag, bad);
                helper_->CorrectFormatCodec(codec);
                const Property& value = holder(codec)[tag];
                Property fixed = bad;
                if (applies && rule->GetSecondConstraint()->CorrectValue(fixed)) {
                    EXPECT_TRUE(rule->GetSecondConstraint()->IsValid(value)) << Dump(codec);
                } else {  // a NaN stays, too
                    EXPECT_EQ(Core::PropertyValueToString(value), Core::PropertyValueToString(bad));
                }
                const std::string after = Dump(codec);
                helper_->CorrectFormatCodec(codec);
                EXPECT_EQ(Dump(codec), after);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, Format, testing::ValuesIn(kFormats), TestName);

}  // namespace
}  // namespace Kestro::Conf
