#include "Kestro/Conf/DataHelpers/ConstraintFlag.h"

#include "Kestro/Conf/DataHelpers/ConstraintErrors.h"

namespace Kestro::Conf {

ConstraintFlag::ConstraintFlag(bool required) : required_(required) {}

void ConstraintFlag::FillValueList(const boost::intrusive_ptr<IConstraintConsumer>& consumer) const {
    IConstraintConsumer& to = Consumer(consumer, "ConstraintFlag");
    const std::string name = required_ ? "true" : "false";
    to.AddValue(name, Core::Property(name, required_));
    to.EndValues();
}

bool ConstraintFlag::IsValid(const Core::Property& value) const {
    return value.Type() == PropertyTypes::Bool && value.GetBool() == required_;
}

bool ConstraintFlag::CorrectValue(Core::Property& value) const {
    if (value.Type() != PropertyTypes::Bool) return false;
    if (!IsValid(value)) value.CopyDataFrom(Core::Property({}, required_));
    return true;
}

std::string ConstraintFlag::GetDescription(const std::string& /*settingName*/) const { return {}; }

}  // namespace Kestro::Conf
