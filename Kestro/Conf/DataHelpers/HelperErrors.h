#pragma once

#include <boost/assert/source_location.hpp>
#include <string>

#include "Kestro/Conf/HelperException.h"

namespace Kestro::Conf {

/// Throws HelperException for what a helper cannot do, with the value that is at fault, if there is one.
///
/// Callers identify a failure by its exception class, description and place. So wherever the library throws with a
/// fixed line and a fixed signature (boost::source_location), these are part of its interface: they stay as they are
/// when the code around them moves, and need not be where the code is.
[[noreturn]] inline void ThrowHelper(const std::string& description, const std::string& value,
                                     const boost::source_location& where) {
    HelperException exception;
    exception << TagDescription(description);
    if (!value.empty()) exception << TagDetails(value);
    Throw(exception, where);
}

}  // namespace Kestro::Conf
