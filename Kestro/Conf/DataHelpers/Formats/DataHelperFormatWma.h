#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// Windows Media Audio file.
class DataHelperFormatWma final : public DataHelperFormatBase {
public:
    DataHelperFormatWma();
};

}  // namespace Kestro::Conf
