#pragma once

#include <boost/assert/source_location.hpp>

#include "Kestro/Conf/ConstraintIsNotApplicableForTypeException.h"

namespace Kestro::Conf {

/// Throws for a value that a constraint on values of `type` cannot check. `where`: see ThrowHelper.
[[noreturn]] inline void ThrowNotApplicable(const char* constraintClass, PropertyTypes type,
                                            const boost::source_location& where) {
    ConstraintIsNotApplicableForTypeException exception;
    exception << ConstraintException::TagConstraintClass(constraintClass) << ConstraintException::TagValueType(type);
    Throw(exception, where);
}

}  // namespace Kestro::Conf
