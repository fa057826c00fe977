#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// Matroska (RFC 9559) with audio alone.
class DataHelperFormatMka final : public DataHelperFormatBase {
public:
    DataHelperFormatMka();
};

}  // namespace Kestro::Conf
