#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// AVI (RIFF).
class DataHelperFormatAvi final : public DataHelperFormatBase {
public:
    DataHelperFormatAvi();
};

}  // namespace Kestro::Conf
