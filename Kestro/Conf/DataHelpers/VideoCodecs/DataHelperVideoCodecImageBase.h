#pragma once

#include <string>

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

namespace Kestro::Conf {

/// Single pictures, or a sequence of them.
class DataHelperVideoCodecImageBase : public DataHelperCodecFFMPEG {
public:
    /// codecId: of IFormatCodecVideo.
    explicit DataHelperVideoCodecImageBase(const std::string& codecId);

protected:
    explicit DataHelperVideoCodecImageBase(const CodecSheet& sheet);
};

}  // namespace Kestro::Conf
