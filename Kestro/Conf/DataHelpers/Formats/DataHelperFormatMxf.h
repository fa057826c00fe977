#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// MXF (SMPTE ST 377-1).
class DataHelperFormatMxf final : public DataHelperFormatBase {
public:
    DataHelperFormatMxf();
};

}  // namespace Kestro::Conf
