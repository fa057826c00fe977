#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// Flash video.
class DataHelperFormatFlv final : public DataHelperFormatBase {
public:
    DataHelperFormatFlv();
};

}  // namespace Kestro::Conf
