#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// FLAC file (RFC 9639), with a cover picture.
class DataHelperFormatFlac final : public DataHelperFormatBase {
public:
    DataHelperFormatFlac();
};

}  // namespace Kestro::Conf
