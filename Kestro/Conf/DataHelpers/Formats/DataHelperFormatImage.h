#pragma once

#include <string>

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// A picture, or the pictures of a sequence, in files of one codec.
class DataHelperFormatImage final : public DataHelperFormatBase {
public:
    /// codecId: the one codec of the container.
    DataHelperFormatImage(const std::string& container, const std::string& codecId);
};

}  // namespace Kestro::Conf
