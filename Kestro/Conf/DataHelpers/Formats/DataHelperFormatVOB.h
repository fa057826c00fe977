#pragma once

#include <string>

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// MPEG-2 program streams of DVD-Video, and MPEG-2 video alone (ISO/IEC 13818-1).
class DataHelperFormatVOB final : public DataHelperFormatBase {
public:
    explicit DataHelperFormatVOB(const std::string& container);
};

}  // namespace Kestro::Conf
