#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// SubRip subtitles.
class DataHelperFormatSrt final : public DataHelperFormatBase {
public:
    DataHelperFormatSrt();
};

}  // namespace Kestro::Conf
