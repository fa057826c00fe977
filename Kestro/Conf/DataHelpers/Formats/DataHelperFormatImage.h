#pragma once

#include <string>

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// A picture, or a sequence of pictures in a file each, of one codec.
class DataHelperFormatImage final : public DataHelperFormatBase {
public:
    /// codecId: the one codec of the container.
    DataHelperFormatImage(const std::string& container, const std::string& codecId);
};

}  // namespace Kestro::Conf
