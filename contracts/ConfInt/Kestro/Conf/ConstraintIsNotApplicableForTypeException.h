#pragma once

#include "Kestro/Conf/ConstraintException.h"

namespace Kestro::Conf {

/// A constraint was applied to a value of a kind that it cannot check.
class KESTRO_CONFINT_API ConstraintIsNotApplicableForTypeException : public ConstraintException {
public:
    ConstraintIsNotApplicableForTypeException();
    ConstraintIsNotApplicableForTypeException(const ConstraintIsNotApplicableForTypeException&);
    ConstraintIsNotApplicableForTypeException& operator=(const ConstraintIsNotApplicableForTypeException&);
    ~ConstraintIsNotApplicableForTypeException() noexcept override;
};

}  // namespace Kestro::Conf
