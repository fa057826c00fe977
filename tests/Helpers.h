#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Kestro/Conf/CodecKinds.h"
#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/DataHelpers/GlobalHeaderFunctions.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"

#include "tests/CallLog.h"
#include "tests/Described.h"

namespace Kestro::Conf {

/// A helper and all that it says without being asked about anything.
struct Subject {
    explicit Subject(boost::intrusive_ptr<const IDataHelper> given, std::string called = {})
        : helper(std::move(given)), name(std::move(called)) {
        helper->FillConstraints(constraints);
        helper->FillValidationRules(rules);
        helper->GetRequiredFilters(filters);
    }
    Subject(const std::string& type, const std::string& called) : Subject(CreateDataHelper(type, called), called) {}

    /// The constraint that the first rule on that setting holds it to; null without one.
    boost::intrusive_ptr<IPropertyConstraint> Requirement(const std::string& path) const {
        for (const auto& [key, rule] : rules) {
            if (rule->GetSecondName() == path) return rule->GetSecondConstraint();
        }
        return {};
    }
    /// What the helper makes of a source's values by its own default settings, after what it says against them.
    std::string MakesOfItsDefaults() const {
        std::string text;
        Core::Property node =
            Core::TreeOf("CodecVideo{Width=640,Height=480,Fps=25/1,SampleRate=8000,Layout=mono,SampleFmt=s16}");
        try {
            helper->ApplyPresetSettings(helper->GetDefaultSettings(), node);
            helper->CorrectFormatCodec(node);
        } catch (const Exception& e) {
            text = e.what();
        }
        return text + Core::Dump(node);
    }
    /// In one text.
    std::string Answers() const {
        std::string text = Core::Dump(helper->GetDefaultSettings());
        const auto add = [&text](const std::string& key, const IPropertyConstraint& constraint) {
            text += "\n" + key + " [" + CallLog::Of(constraint) + constraint.GetDescription("") + "]";
        };
        for (const auto& [filter, implementation] : filters) text += "\n" + filter + " " + implementation;
        for (const auto& [key, constraint] : constraints) add(key, *constraint);
        for (const auto& [path, rule] : rules) {
            add(path + ": " + rule->GetFirstName(), *rule->GetFirstConstraint());
            add(rule->GetSecondName(), *rule->GetSecondConstraint());
        }
        return text;
    }

    boost::intrusive_ptr<const IDataHelper> helper;
    std::string name;
    ConstraintMap constraints;
    ValidationRuleList rules;
    FilterList filters;
};

/// Type and name in the registry.
using Key = std::pair<std::string, std::string>;

constexpr const char* kFilters[] = {"AudioResample", "AudioVolume", "AudioPackets", "VideoFrameRate", "VideoResize"};

inline std::vector<Key> KeysOf(const std::vector<std::string>& types) {
    std::vector<Key> keys;
    for (const std::string& type : types) {
        for (const auto& [name, helper] : GetAvailableDataHelpers(type)) keys.emplace_back(type, name);
    }
    return keys;
}
inline std::vector<Key> AllKeys() {
    std::vector<Key> keys =
        KeysOf({IPreset::KEY_FORMAT, IPreset::KEY_FILTER_AUDIO_CODEC, IPreset::KEY_FILTER_VIDEO_CODEC});
    for (const char* filter : kFilters) keys.emplace_back(filter, "");
    return keys;
}

/// The names of what a constraint offers, each before a blank.
inline std::string Names(const IPropertyConstraint& constraint) {
    std::string names;
    for (const Core::Property& value : Described(constraint)) names += value.Name() + " ";
    return names;
}

/// Whether the container stores a codec of that description, `c{CodecId=h264}`; its tag is 0 where it has none.
inline bool IsSupported(const std::string& container, Core::Property codec) {
    Core::Property format;
    format.SetChild(IFormatFile::TAG_CONTAINER, container);
    if (!codec.ChildExists(IFormatCodec::TAG_CODEC_TAG)) codec.SetChild(IFormatCodec::TAG_CODEC_TAG, 0);
    const std::string& id = codec[IFormatCodec::TAG_CODEC_ID].GetString();
    boost::intrusive_ptr<const IFormatCodec> description = IFormatCodecSubtitle::Create(codec);
    if (IsVideoCodec(id)) description = IFormatCodecVideo::Create(codec);
    if (IsAudioCodec(id) || id == "opus") description = IFormatCodecAudio::Create(codec);
    return CodecIsSupported(IFormatFile::Create(format), description);
}

}  // namespace Kestro::Conf
