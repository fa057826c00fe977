#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// MPEG-2 transport stream (ISO/IEC 13818-1), MPEG audio by default.
class DataHelperFormatMpegTS final : public DataHelperFormatBase {
public:
    DataHelperFormatMpegTS();
};

}  // namespace Kestro::Conf
