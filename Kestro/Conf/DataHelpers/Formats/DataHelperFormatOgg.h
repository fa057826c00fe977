#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// Ogg (RFC 3533) with audio.
class DataHelperFormatOgg final : public DataHelperFormatBase {
public:
    DataHelperFormatOgg();
};

}  // namespace Kestro::Conf
