#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// WebM: Matroska (RFC 9559) of open codecs.
class DataHelperFormatWebm final : public DataHelperFormatBase {
public:
    DataHelperFormatWebm();
};

}  // namespace Kestro::Conf
