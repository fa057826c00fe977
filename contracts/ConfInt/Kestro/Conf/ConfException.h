#pragma once

#include "Kestro/Exception.h"

namespace Kestro::Conf {

/// Base of the configuration exceptions.
class KESTRO_CONFINT_API ConfException : public Exception {
public:
    ConfException();
    ConfException(const ConfException&);
    ConfException& operator=(const ConfException&);
    ~ConfException() noexcept override;
};

}  // namespace Kestro::Conf
