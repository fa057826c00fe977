#pragma once

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// Matroska with video (RFC 9559).
class DataHelperFormatMkv final : public DataHelperFormatBase {
public:
    DataHelperFormatMkv();
};

}  // namespace Kestro::Conf
