#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <string>

#include "Kestro/Conf/IPropertyConstraint.h"
#include "Kestro/Core/Property.h"
#include "Kestro/IRefCountable.h"

namespace Kestro::Conf {

/// Ties two settings of one tree: where the first satisfies its constraint, the second must satisfy its own. Immutable.
class KESTRO_CONFINT_API IValidationRule : public virtual IRefCountable {
public:
    ~IValidationRule() override;

    /// Whether the tree keeps the rule. Both names are paths below the tree's root (Property::ChildByPath); a missing
    /// node throws PropertyException, a value of a kind that a constraint cannot check
    /// ConstraintIsNotApplicableForTypeException.
    virtual bool Validate(const Core::Property& settings) const = 0;
    virtual const std::string& GetFirstName() const = 0;
    virtual const std::string& GetSecondName() const = 0;
    virtual boost::intrusive_ptr<IPropertyConstraint> GetFirstConstraint() const = 0;
    virtual boost::intrusive_ptr<IPropertyConstraint> GetSecondConstraint() const = 0;
};

}  // namespace Kestro::Conf
