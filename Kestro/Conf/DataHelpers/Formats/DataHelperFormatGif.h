#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// GIF, still or moving.
class DataHelperFormatGif final : public DataHelperFormatBase {
public:
    DataHelperFormatGif();
};

}  // namespace Kestro::Conf
