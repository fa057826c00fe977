#pragma once

#include <string>

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// WAV or AIFF file.
class DataHelperFormatWav final : public DataHelperFormatBase {
public:
    explicit DataHelperFormatWav(const std::string& container);
};

}  // namespace Kestro::Conf
