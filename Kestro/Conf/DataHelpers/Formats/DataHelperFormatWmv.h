#pragma once

#include <string>

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// Windows Media Video and Advanced Systems Format files.
class DataHelperFormatWmv final : public DataHelperFormatBase {
public:
    explicit DataHelperFormatWmv(const std::string& container);
};

}  // namespace Kestro::Conf
