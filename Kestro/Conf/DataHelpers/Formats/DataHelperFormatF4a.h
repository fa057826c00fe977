#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// Flash audio. The registry serves its name with the M4A helper.
class DataHelperFormatF4a final : public DataHelperFormatBase {
public:
    DataHelperFormatF4a();
};

}  // namespace Kestro::Conf
