#pragma once

#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecImageBase.h"

namespace Kestro::Conf {

/// Motion JPEG, and JPEG (ISO/IEC 10918-1).
class DataHelperVideoCodecMjpeg final : public DataHelperVideoCodecImageBase {
public:
    DataHelperVideoCodecMjpeg();
};

}  // namespace Kestro::Conf
