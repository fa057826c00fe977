#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// Ogg (RFC 3533) with video.
class DataHelperFormatOgv final : public DataHelperFormatBase {
public:
    DataHelperFormatOgv();
};

}  // namespace Kestro::Conf
