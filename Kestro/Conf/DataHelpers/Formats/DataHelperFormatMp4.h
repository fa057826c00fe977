#pragma once

#include <string>

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// MP4 (ISO/IEC 14496-14) under several container names.
class DataHelperFormatMp4 final : public DataHelperFormatBase {
public:
    /// takesH265AndDts: whether the muxer behind the name takes these two; that of portable players does not.
    DataHelperFormatMp4(const std::string& container, bool takesH265AndDts);
};

}  // namespace Kestro::Conf
