#include "Kestro/Conf/DataHelpers/PairValidationRule.h"

#include <utility>

#include "Kestro/Conf/ConstraintException.h"

namespace Kestro::Conf {

namespace {

bool IsValid(const boost::intrusive_ptr<IPropertyConstraint>& constraint, const Core::Property& settings,
             const std::string& path) {
    if (!constraint) {
        ConstraintException exception;
        exception << TagDescription("A rule without a constraint cannot be checked") << TagDetails(path);
        Throw(exception,
              boost::source_location("Kestro/Conf/DataHelpers/PairValidationRule", __LINE__, BOOST_CURRENT_FUNCTION));
    }
    return constraint->IsValid(settings.ChildByPath(path));
}

}  // namespace

boost::intrusive_ptr<IValidationRule> PairValidationRule::Create(
    const std::string& firstName, boost::intrusive_ptr<IPropertyConstraint> firstConstraint,
    const std::string& secondName, boost::intrusive_ptr<IPropertyConstraint> secondConstraint) {
    return new PairValidationRule(firstName, secondName, std::move(firstConstraint), std::move(secondConstraint));
}

PairValidationRule::PairValidationRule(std::string firstName, std::string secondName,
                                       boost::intrusive_ptr<IPropertyConstraint> firstConstraint,
                                       boost::intrusive_ptr<IPropertyConstraint> secondConstraint)
    : firstName_(std::move(firstName)),
      secondName_(std::move(secondName)),
      firstConstraint_(std::move(firstConstraint)),
      secondConstraint_(std::move(secondConstraint)) {}

bool PairValidationRule::Validate(const Core::Property& settings) const {
    return !IsValid(firstConstraint_, settings, firstName_) || IsValid(secondConstraint_, settings, secondName_);
}

const std::string& PairValidationRule::GetFirstName() const { return firstName_; }
const std::string& PairValidationRule::GetSecondName() const { return secondName_; }
boost::intrusive_ptr<IPropertyConstraint> PairValidationRule::GetFirstConstraint() const { return firstConstraint_; }
boost::intrusive_ptr<IPropertyConstraint> PairValidationRule::GetSecondConstraint() const { return secondConstraint_; }

}  // namespace Kestro::Conf
