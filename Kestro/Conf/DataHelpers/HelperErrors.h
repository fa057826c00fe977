#pragma once

#include <boost/assert/source_location.hpp>
#include <string>

#include "Kestro/Conf/HelperException.h"

namespace Kestro::Conf {

/// Reports what a helper cannot do; `value` is the one that stood in its way.
[[noreturn]] inline void ThrowHelper(const std::string& description, const std::string& value,
                                     const boost::source_location& where) {
    HelperException exception;
    exception << TagDescription(description);
    if (!value.empty()) exception << TagDetails(value);
    Throw(exception, where);
}

}  // namespace Kestro::Conf
