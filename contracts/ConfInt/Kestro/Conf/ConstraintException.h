#pragma once

#include "Kestro/Conf/ConfException.h"
#include "Kestro/PropertyTypes.h"

namespace Kestro::Conf {

/// A constraint was made or used in a way that it does not allow.
class KESTRO_CONFINT_API ConstraintException : public ConfException {
public:
    /// The name of the constraint class.
    using TagConstraintClass = boost::error_info<struct TagConstraintClassTag, std::string>;
    /// The kind of value that the constraint checks.
    using TagValueType = boost::error_info<struct TagValueTypeTag, PropertyTypes>;

    ConstraintException();
    ConstraintException(const ConstraintException&);
    ConstraintException& operator=(const ConstraintException&);
    ~ConstraintException() noexcept override;
};

}  // namespace Kestro::Conf
