#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// AAC in ADTS frames (ISO/IEC 13818-7).
class DataHelperFormatAAC final : public DataHelperFormatBase {
public:
    DataHelperFormatAAC();
};

}  // namespace Kestro::Conf
