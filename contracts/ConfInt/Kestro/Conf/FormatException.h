#pragma once

#include "Kestro/Conf/ConfException.h"

namespace Kestro::Conf {

/// A description of a file or stream lacks what was asked of it.
class KESTRO_CONFINT_API FormatException : public ConfException {
public:
    FormatException();
    FormatException(const FormatException&);
    FormatException& operator=(const FormatException&);
    ~FormatException() noexcept override;
};

}  // namespace Kestro::Conf
