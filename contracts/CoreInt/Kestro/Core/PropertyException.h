#pragma once

#include "Kestro/Exception.h"

namespace Kestro::Core {

/// A Property was asked for a child that it does not have, or for a value that cannot be given in that form.
/// TagDescription is the message; TagDetails the path that was asked for, or the value.
class KESTRO_COREINT_API PropertyException : public Exception {
public:
    PropertyException();
    PropertyException(const PropertyException&);
    PropertyException& operator=(const PropertyException&);
    ~PropertyException() noexcept override;
};

}  // namespace Kestro::Core
