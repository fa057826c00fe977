#pragma once

#include <string>

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// 3GPP and 3GPP2 files (3GPP TS 26.244).
class DataHelperFormat3gp final : public DataHelperFormatBase {
public:
    explicit DataHelperFormat3gp(const std::string& container);
};

}  // namespace Kestro::Conf
