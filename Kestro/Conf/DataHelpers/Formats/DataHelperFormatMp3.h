#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// MP3 with a cover picture (ID3v2).
class DataHelperFormatMp3 final : public DataHelperFormatBase {
public:
    DataHelperFormatMp3();
};

}  // namespace Kestro::Conf
