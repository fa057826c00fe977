#pragma once

#include <string>

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// MPEG-1 program streams, and MPEG-1 video alone (ISO/IEC 11172-1).
class DataHelperFormatMpeg1 final : public DataHelperFormatBase {
public:
    explicit DataHelperFormatMpeg1(const std::string& container);
};

}  // namespace Kestro::Conf
