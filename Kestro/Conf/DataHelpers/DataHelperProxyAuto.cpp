#include "Kestro/Conf/DataHelpers/DataHelperProxyAuto.h"

#include <utility>

#include "Kestro/Conf/DataHelpers/ConstraintErrors.h"
#include "Kestro/Conf/DataHelpers/ConstraintRange.h"
#include "Kestro/Conf/DataHelpers/ConstraintSet.h"
#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/DataHelpers/FakeConstraintConsumer.h"
#include "Kestro/Conf/DataHelpers/Filters/DataHelperAudioResample.h"
#include "Kestro/Conf/DataHelpers/PairValidationRule.h"
#include "Kestro/Conf/DataHelpers/Sheet.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/StreamRecord.h"
#include "Kestro/Proc/SettingsFilterFrameRate.h"

namespace Kestro::Conf {

namespace {

using ConstraintPtr = boost::intrusive_ptr<IPropertyConstraint>;

/// A constraint that accepts the automatic value beside its own.
class ConstraintOrAuto final : public RefCounted<IPropertyConstraint> {
public:
    ConstraintOrAuto(Core::Property automatic, ConstraintPtr own)
        : automatic_(std::move(automatic)), own_(std::move(own)) {}

    void FillValueList(const boost::intrusive_ptr<IConstraintConsumer>& consumer) const override {
        // A consumer that is told a value takes what follows for a list, not for bounds.
        if (dynamic_cast<const ConstraintRange*>(own_.get()) == nullptr) {
            Consumer(consumer, "ConstraintOrAuto").AddValue(automatic_.Name(), automatic_);
        }
        own_->FillValueList(consumer);
    }
    bool IsValid(const Core::Property& value) const override { return value == automatic_ || own_->IsValid(value); }
    bool CorrectValue(Core::Property& value) const override { return value == automatic_ || own_->CorrectValue(value); }
    std::string GetDescription(const std::string& settingName) const override {
        if (own_->GetDescription(settingName).empty()) return {};
        const auto consumer = FakeConstraintConsumer::Create();
        FillValueList(consumer);
        return ConstraintSet::Create(automatic_.Type(), consumer->GetResult())->GetDescription(settingName);
    }

private:
    Core::Property automatic_;
    ConstraintPtr own_;
};

/// The text "automatic" that is added to the constraint of that key; null where none is.
const std::string* AutomaticText(const std::string& key) {
    if (key == IFormatCodec::TAG_BITRATE_MODE) return &IFormatCodec::TAG_BITRATE_MODE_CBR_AUTO;
    if (key == StreamRecord::Find(StreamType::Audio).CodecIdPath()) return &IFormatCodec::CODEC_ID_AUTO;
    return nullptr;
}

/// The value that is added to a rule on the setting at that path; an empty node where none is.
Core::Property AutomaticValue(const std::string& path) {
    const std::string name = FrameRates::kSource.name;
    if (path == SettingKey(Node::Resampler, IFormatCodecAudio::TAG_SAMPLE_RATE))
        return {name, DataHelperAudioResample::KEEP_SAMPLE_RATE};
    if (path == SettingKey(Node::Resampler, IFormatCodecAudio::TAG_LAYOUT)) {
        return {name, IFormatCodecAudio::TAG_CH_LAYOUT_UNKNOWN};
    }
    if (path == SettingKey(Node::FrameRate, IFormatCodecVideo::TAG_FPS)) {
        return {name, Proc::SettingsFilterFrameRate::MARK_USE_ORIGINAL_FRAMERATE};
    }
    return {};
}

}  // namespace

DataHelperProxyAuto::DataHelperProxyAuto(std::string type, boost::intrusive_ptr<const IDataHelper> helper)
    : type_(std::move(type)), helper_(std::move(helper)) {}

Core::Property DataHelperProxyAuto::GetDefaultSettings() const { return helper_->GetDefaultSettings(); }

void DataHelperProxyAuto::GetRequiredFilters(FilterList& filters) const { helper_->GetRequiredFilters(filters); }

void DataHelperProxyAuto::FillValidationRules(ValidationRuleList& rules) const {
    ValidationRuleList own;
    helper_->FillValidationRules(own);
    for (auto& [path, rule] : own) {
        const Core::Property automatic = AutomaticValue(rule->GetSecondName());
        if (!automatic.IsEmpty() && !rule->GetSecondConstraint()->IsValid(automatic)) {
            rule = PairValidationRule::Create(rule->GetFirstName(), rule->GetFirstConstraint(), rule->GetSecondName(),
                                              new ConstraintOrAuto(automatic, rule->GetSecondConstraint()));
        }
        rules.emplace_back(path, rule);
    }
}

void DataHelperProxyAuto::FillConstraints(ConstraintMap& constraints) const {
    ConstraintMap own;
    helper_->FillConstraints(own);
    for (auto& [key, constraint] : own) {
        if (const std::string* automatic = AutomaticText(key)) {
            const auto consumer = FakeConstraintConsumer::Create();
            consumer->AddValue(*automatic, Core::Property(*automatic, *automatic));
            constraint->FillValueList(consumer);
            constraint = ConstraintSet::Create(PropertyTypes::String, consumer->GetResult());
        }
        constraints.insert_or_assign(key, constraint);
    }
}

void DataHelperProxyAuto::ApplyPresetSettings(const Core::Property& source, Core::Property& target) const {
    helper_->ApplyPresetSettings(source, target);
}

void DataHelperProxyAuto::CorrectFormatCodec(Core::Property& codec) const { helper_->CorrectFormatCodec(codec); }

}  // namespace Kestro::Conf

const boost::intrusive_ptr<const Kestro::Conf::IDataHelper> CreateDataHelperAuto(const std::string& type,
                                                                                 const std::string& name) {
    return new Kestro::Conf::DataHelperProxyAuto(type, CreateDataHelper(type, name));
}
