#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// Flash film.
class DataHelperFormatSwf final : public DataHelperFormatBase {
public:
    DataHelperFormatSwf();
};

}  // namespace Kestro::Conf
