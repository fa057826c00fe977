#pragma once

#include <boost/assert/source_location.hpp>
#include <boost/smart_ptr/intrusive_ptr.hpp>

#include "Kestro/Conf/ConstraintIsNotApplicableForTypeException.h"
#include "Kestro/Conf/IConstraintConsumer.h"

namespace Kestro::Conf {

/// Throws for a value that a constraint on values of `type` cannot check. `where`: see ThrowHelper.
[[noreturn]] inline void ThrowNotApplicable(const char* constraintClass, PropertyTypes type,
                                            const boost::source_location& where) {
    ConstraintIsNotApplicableForTypeException exception;
    exception << ConstraintException::TagConstraintClass(constraintClass) << ConstraintException::TagValueType(type);
    Throw(exception, where);
}

/// Whom a constraint describes itself to: throws ConstraintException when that is nobody.
inline IConstraintConsumer& Consumer(const boost::intrusive_ptr<IConstraintConsumer>& consumer,
                                     const char* constraintClass) {
    if (consumer) return *consumer;
    ConstraintException exception;
    exception << TagDescription("A constraint cannot describe itself without a consumer")
              << ConstraintException::TagConstraintClass(constraintClass);
    Throw(exception, BOOST_CURRENT_LOCATION);
}

}  // namespace Kestro::Conf
