#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "Kestro/Core/PropertyException.h"

#include "tests/Helpers.h"

/// What holds for every helper of the registry, whatever it describes and whatever it is given: for the tests, and for
/// the fuzzer.
namespace Kestro::Conf::Laws {

using Core::Dump;
using Core::NodeOf;
using Core::Property;

/// Equal, and a NaN to itself.
inline bool IsSame(const Property& a, const Property& b) { return a.Type() == b.Type() && Dump(a) == Dump(b); }

/// The last segment of a path.
inline std::string TagOf(const std::string& path) { return path.substr(path.rfind(Property::SEPARATOR) + 1); }

/// The answer; nullopt where there is an exception of the family.
template <class Question>
std::optional<bool> Answer(const Question& question) {
    try {
        return question();
    } catch (const Exception& e) {
        EXPECT_STRNE(e.what(), "");
        EXPECT_NE(boost::get_error_info<TagCallStack>(e), nullptr);
        return std::nullopt;
    }
}

/// A setting of a codec node, or of its options.
inline Property* SettingOf(Property& node, const std::string& tag) {
    const std::string option = IFormatCodec::TAG_CODEC_OPTIONS_ENCODE + Property::SEPARATOR + tag;
    const std::string& path = tag == IFormatCodec::TAG_PROFILE ? option : tag;
    return node.FindByPath(path) != nullptr ? &node.ChildByPath(path) : nullptr;
}

/// The tree that rules run over, made of a container's default settings, the filters' and the encoders'; the codec of
/// one kind of stream is the given one.
inline Property RuleTree(const Property& format, const std::string& codecKey, const std::string& codecId) {
    Property root = NodeOf("root", {format[IPreset::KEY_STREAMS]});
    for (const Property& stream : format[IPreset::KEY_STREAMS]) {
        const Property& given = stream[stream.Count() - 1];
        const std::string& id = given.Name() == codecKey ? codecId : given[IFormatCodec::TAG_CODEC_ID].GetString();
        Property& codec = root.SetChild(given.Name());
        if (given.Name() != IPreset::KEY_FILTER_SUBTITLE_CODEC && GetAvailableDataHelpers(given.Name()).contains(id))
            codec.CopyDataFrom(CreateDataHelper(given.Name(), id)->GetDefaultSettings());
        for (const Property& child : given) codec.SetChild(child.Name(), child);
        codec.SetChild(IFormatCodec::TAG_CODEC_ID, id);
        root[IPreset::KEY_STREAMS][stream.Name()].SetChild(given.Name(), codec);
    }
    for (const char* filter : kFilters) root.SetChild(filter, CreateDataHelper(filter, "")->GetDefaultSettings());
    root.SetChild(IPreset::KEY_FORMAT, format);
    return root;
}

/// A codec node with the values of a source, which the encoder's rules accept.
inline Property SourceValues(const Subject& subject) {
    Property node = NodeOf("source", {{"Width", 640}, {"Height", 480}, {"Fps", Property::Ratio(25)}});
    for (const Property& sound :
         {Property("SampleRate", 48000), Property("Layout", "stereo"), Property("SampleFmt", "s16")}) {
        Property& value = node.SetChild(sound.Name(), sound);
        const auto allowed = subject.Requirement("AudioResample/Resampler/" + sound.Name());
        if (allowed != nullptr && !allowed->IsValid(value)) value.CopyDataFrom(*Described(*allowed).begin());
    }
    return node;
}

/// A copy is whole, and a value that is printed reads back.
inline void OfTrees(const Property& tree) {
    SCOPED_TRACE(Dump(tree));
    Property copy(tree);
    EXPECT_TRUE(IsSame(copy, tree) && copy.Name() == tree.Name());
    EXPECT_TRUE(copy == tree || Dump(tree).find("nan") != std::string::npos);
    const Property moved(std::move(copy));
    EXPECT_TRUE(IsSame(moved, tree));
    EXPECT_TRUE(copy.IsEmpty());  // NOLINT(bugprone-use-after-move): that is what is asked here
    const Property printed("", PropertyValueToString(tree));
    EXPECT_TRUE(tree.Type() != PropertyTypes::Int64 || printed.GetInt64() == tree.GetInt64());
    EXPECT_TRUE(tree.Type() != PropertyTypes::Ratio || printed.GetRatio() == tree.GetRatio());
    const bool isReal = tree.Type() == PropertyTypes::Double && std::isfinite(tree.GetDouble());
    EXPECT_TRUE(!isReal || printed.GetDouble() == tree.GetDouble());
}

/// A correction makes a value valid, or leaves it alone; it never throws.
inline void OfConstraints(const IPropertyConstraint& constraint, const Property& value) {
    SCOPED_TRACE(CallLog::Of(constraint) + " of " + Dump(value));
    const std::optional<bool> isValid = Answer([&] { return constraint.IsValid(value); });
    Property corrected = value;
    const bool isCorrected = constraint.CorrectValue(corrected);
    EXPECT_EQ(corrected.Name(), value.Name());
    EXPECT_TRUE(!isCorrected || constraint.IsValid(corrected)) << Dump(corrected);
    EXPECT_TRUE(IsSame(corrected, value) || (isCorrected && isValid != true)) << Dump(corrected);
}

/// Where the first setting meets its condition, the second must meet its own; a setting that is needed must be there.
inline void OfRules(const IValidationRule& rule, const Property& tree) {
    SCOPED_TRACE(rule.GetFirstName() + " -> " + rule.GetSecondName());
    const Property* first = tree.FindByPath(rule.GetFirstName());
    const Property* second = tree.FindByPath(rule.GetSecondName());
    std::optional<bool> expected;
    if (first != nullptr) expected = Answer([&] { return !rule.GetFirstConstraint()->IsValid(*first); });
    if (expected == false) {
        expected.reset();
        if (second != nullptr) expected = Answer([&] { return rule.GetSecondConstraint()->IsValid(*second); });
    }
    EXPECT_EQ(Answer([&] { return rule.Validate(tree); }), expected) << Dump(tree);
}

/// A preset and a codec node are refused, or what comes of them needs no other correction, lies inside the constraints
/// and keeps the rules that a codec node is held to.
inline void OfSetups(const Subject& subject, const Property& preset, Property node) {
    SCOPED_TRACE(Dump(preset) + " on " + Dump(node));
    const Property defaults = subject.helper->GetDefaultSettings();
    const bool isApplied = Answer([&] { return subject.helper->ApplyPresetSettings(preset, node), true; }).has_value();
    const auto correct = [&] { return subject.helper->CorrectFormatCodec(node), true; };
    if (!Answer(correct)) return;
    const Property corrected = node;
    EXPECT_TRUE(Answer(correct) && IsSame(node, corrected)) << Dump(corrected) << " becomes " << Dump(node);
    for (const std::string tag : {"RateControl", "BitRate", "Quality"}) {
        const auto found = subject.constraints.find(tag);
        if (!isApplied || found == subject.constraints.end() || !node.ChildExists(tag)) continue;
        // The automatic choice leaves everything as it is; without a default there is nothing to go back to.
        if (subject.name == IFormatCodec::CODEC_ID_AUTO || !defaults.ChildExists(tag) || node[tag] == defaults[tag])
            continue;
        EXPECT_TRUE(found->second->IsValid(node[tag])) << Dump(node);
    }
    const std::string kind = node.Name() == IFormatCodecAudio::TAG_FORMAT_CODEC_AUDIO ? "/AudioCodec/" : "/VideoCodec/";
    const bool isFormat = defaults.Name() == IPreset::KEY_FORMAT;
    for (const auto& [path, rule] : subject.rules) {
        const std::string tag = TagOf(rule->GetSecondName());
        const Property* value = SettingOf(node, tag);
        const std::string held = isFormat ? "Fps Cover Profile SampleRate Layout" : "SampleRate Layout";
        if (value == nullptr || held.find(tag) == std::string::npos) continue;
        if (isFormat && (rule->GetFirstName().find(kind) == std::string::npos ||
                         !rule->GetFirstConstraint()->IsValid(node[IFormatCodec::TAG_CODEC_ID]))) {
            continue;
        }
        Property other = *value;
        const auto allowed = rule->GetSecondConstraint();
        EXPECT_TRUE(Answer([&] { return allowed->IsValid(*value); }) == true || !allowed->CorrectValue(other))
            << rule->GetSecondName() << " of " << Dump(node);
    }
}

/// Whatever is asked is answered, or refused by an exception of the family.
inline void OfQueries(const Property& format, const Property& codec) {
    const auto file = IFormatFile::Create(format);
    EXPECT_NO_THROW({
        CodecIsSupported(file, IFormatCodecVideo::Create(codec));
        CodecIsSupported(file, IFormatCodecAudio::Create(codec));
        CodecIsSupported(file, IFormatCodecSubtitle::Create(codec));
    }) << Dump(format)
       << Dump(codec);
}

}  // namespace Kestro::Conf::Laws
