#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// QuickTime.
class DataHelperFormatMov final : public DataHelperFormatBase {
public:
    DataHelperFormatMov();
};

}  // namespace Kestro::Conf
