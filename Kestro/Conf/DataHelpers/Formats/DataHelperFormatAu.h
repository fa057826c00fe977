#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// Sun AU file.
class DataHelperFormatAu final : public DataHelperFormatBase {
public:
    DataHelperFormatAu();
};

}  // namespace Kestro::Conf
