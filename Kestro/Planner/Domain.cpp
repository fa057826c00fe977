#include "Kestro/Planner/Domain.h"

#include <algorithm>

#include "Kestro/Conf/IConstraintConsumer.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/Planner/Text.h"
#include "Kestro/RefCounted.h"

namespace Kestro::Planner {
namespace {

using Kestro::Conf::IConstraintConsumer;
using Kestro::Conf::IPropertyConstraint;
using Kestro::Conf::IValidationRule;
using Kestro::Core::Property;
using Kestro::Core::PropertyValueToString;

/// Keeps everything that a constraint tells, which a settings tree could not: equal names, the step of real numbers.
class Recorder final : public Kestro::RefCounted<IConstraintConsumer> {
public:
    explicit Recorder(Domain& domain) : domain_(domain) {}

    void Clear() override { domain_ = Domain(); }
    void AddValue(const std::string& name, const Property& value) override {
        domain_.isList = true;
        domain_.entries.push_back({name, value});
    }
    void EndValues() override { domain_.isList = true; }
    void SetMax(int64_t value) override { domain_.max.emplace("max", value); }
    void SetMax(double value) override { domain_.max.emplace("max", value); }
    void SetMin(int64_t value) override { domain_.min.emplace("min", value); }
    void SetMin(double value) override { domain_.min.emplace("min", value); }
    void SetStep(int64_t value) override { domain_.step.emplace("step", value); }
    void SetStep(double value) override { domain_.step.emplace("step", value); }
    Property GetResult() const override { return {}; }

private:
    Domain& domain_;
};

/// The descriptions that the library gives by identifier, as they follow "must be".
std::string DescriptionInWords(const std::string& description) {
    if (description == IPropertyConstraint::DESCRIPTION_ID_EVEN_SIZE) return "even";
    if (description == IPropertyConstraint::DESCRIPTION_ID_FRAME_RATE) return "above 0/1, or 0/1 for that of the input";
    if (description == IPropertyConstraint::DESCRIPTION_ID_DTS_BITRATE) {
        return "from " + std::to_string(Kestro::Conf::IFormatCodecAudio::MIN_DTS_BITRATE) + " to " +
               std::to_string(Kestro::Conf::IFormatCodecAudio::MAX_DTS_BITRATE) +
               ", the least rising with sample rate and channels";
    }
    return description;
}

std::string EntryText(const Domain::Entry& entry) {
    const std::string value = PropertyValueToString(entry.value);
    return value.empty() || value == entry.name ? entry.name : entry.name + " = " + value;
}

std::string RangeText(const Domain& domain) {
    std::string text;
    if (domain.min) text += "from " + PropertyValueToString(*domain.min);
    if (domain.max) text += (text.empty() ? "up to " : " to ") + PropertyValueToString(*domain.max);
    if (domain.step) text += " in steps of " + PropertyValueToString(*domain.step);
    return text;
}

}  // namespace

Domain DescribeDomain(const IPropertyConstraint& constraint) {
    Domain domain;
    constraint.FillValueList(boost::intrusive_ptr<IConstraintConsumer>(new Recorder(domain)));
    if (!domain.isList && !domain.min && !domain.max) domain.description = constraint.GetDescription("value");
    return domain;
}

std::vector<std::string> AllowedValues(const Domain& domain) {
    std::vector<std::string> texts;
    for (const Domain::Entry& entry : domain.entries) texts.push_back(EntryText(entry));
    if (domain.isList) return texts;
    return {domain.min || domain.max ? RangeText(domain) : DescriptionInWords(domain.description)};
}

std::string InWords(const Domain& domain) {
    const std::vector<std::string> values = AllowedValues(domain);
    if (!domain.isList) return values.front();
    if (values.empty()) return "absent: no value is accepted";
    return (values.size() == 1 ? "" : "one of ") + ListInWords(values);
}

std::string ListInWords(const std::vector<std::string>& values) {
    const bool plain = std::ranges::none_of(values, [](const auto& value) { return value.find(' ') != value.npos; });
    return Join(values, plain ? " " : ", ");
}

std::string InWords(const IValidationRule& rule) {
    return "When " + rule.GetFirstName() + " is " + InWords(*rule.GetFirstConstraint()) + ", " + rule.GetSecondName() +
           " must be " + InWords(*rule.GetSecondConstraint()) + ".";
}

}  // namespace Kestro::Planner
