#pragma once

#include <string>

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// The program streams of DVD-Video, Super Video CD and Video CD.
class DataHelperFormatDVD final : public DataHelperFormatBase {
public:
    /// container: IFormatFile::FORMAT_DVD, which alone takes AC-3, FORMAT_VCD or FORMAT_SVCD.
    explicit DataHelperFormatDVD(const std::string& container);
};

}  // namespace Kestro::Conf
