#include "Kestro/Conf/DataHelpers/ConstraintMethod.h"

#include <utility>

#include "Kestro/Conf/DataHelpers/ConstraintErrors.h"

namespace Kestro::Conf {

boost::intrusive_ptr<IPropertyConstraint> ConstraintMethod::CreateAny(const std::string& descriptionId) {
    return new ConstraintMethod([](const Core::Property&) { return true; }, descriptionId);
}

boost::intrusive_ptr<IPropertyConstraint> ConstraintMethod::CreateEven(const std::string& descriptionId) {
    const auto isEven = [](const Core::Property& value) {
        return value.Type() == PropertyTypes::Int64 && value.GetInt64() % 2 == 0;
    };
    return new ConstraintMethod(isEven, descriptionId);
}

ConstraintMethod::ConstraintMethod(Predicate predicate, std::string descriptionId)
    : predicate_(std::move(predicate)), descriptionId_(std::move(descriptionId)) {}

void ConstraintMethod::FillValueList(const boost::intrusive_ptr<IConstraintConsumer>& consumer) const {
    Consumer(consumer, "ConstraintMethod");
}

bool ConstraintMethod::IsValid(const Core::Property& value) const { return predicate_ && predicate_(value); }

bool ConstraintMethod::CorrectValue(Core::Property& value) const { return IsValid(value); }

std::string ConstraintMethod::GetDescription(const std::string& /*settingName*/) const { return descriptionId_; }

}  // namespace Kestro::Conf
