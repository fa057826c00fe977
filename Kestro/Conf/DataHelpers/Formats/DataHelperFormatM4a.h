#pragma once

#include <string>

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// MPEG-4 audio with a cover picture.
class DataHelperFormatM4a final : public DataHelperFormatBase {
public:
    explicit DataHelperFormatM4a(const std::string& container);
};

}  // namespace Kestro::Conf
