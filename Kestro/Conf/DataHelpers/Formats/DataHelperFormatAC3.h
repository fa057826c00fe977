#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// AC-3 frames (ATSC A/52).
class DataHelperFormatAC3 final : public DataHelperFormatBase {
public:
    DataHelperFormatAC3();
};

}  // namespace Kestro::Conf
