#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// MPEG-2 transport stream (ISO/IEC 13818-1), AAC by default.
class DataHelperFormatMpeg2TS final : public DataHelperFormatBase {
public:
    DataHelperFormatMpeg2TS();
};

}  // namespace Kestro::Conf
