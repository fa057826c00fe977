#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <string>

#include "Kestro/Conf/IValidationRule.h"
#include "Kestro/RefCounted.h"

namespace Kestro::Conf {

/// Where the setting at the first path satisfies the first constraint, the one at the second must satisfy the second.
class PairValidationRule final : public RefCounted<IValidationRule> {
public:
    /// Nothing is checked here: a null constraint fails when it is used, with a ConstraintException.
    KESTRO_DATAHELPERS_API static boost::intrusive_ptr<IValidationRule> Create(
        const std::string& firstName, boost::intrusive_ptr<IPropertyConstraint> firstConstraint,
        const std::string& secondName, boost::intrusive_ptr<IPropertyConstraint> secondConstraint);

    /// Where the first constraint does not hold, the rule does not apply and the second setting need not be there.
    bool Validate(const Core::Property& settings) const override;
    const std::string& GetFirstName() const override;
    const std::string& GetSecondName() const override;
    boost::intrusive_ptr<IPropertyConstraint> GetFirstConstraint() const override;
    boost::intrusive_ptr<IPropertyConstraint> GetSecondConstraint() const override;

private:
    PairValidationRule(std::string firstName, std::string secondName,
                       boost::intrusive_ptr<IPropertyConstraint> firstConstraint,
                       boost::intrusive_ptr<IPropertyConstraint> secondConstraint);

    std::string firstName_;
    std::string secondName_;
    boost::intrusive_ptr<IPropertyConstraint> firstConstraint_;
    boost::intrusive_ptr<IPropertyConstraint> secondConstraint_;
};

}  // namespace Kestro::Conf
