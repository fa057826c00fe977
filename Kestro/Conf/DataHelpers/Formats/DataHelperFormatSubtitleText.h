#pragma once

#include <string>

#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

namespace Kestro::Conf {

/// Text subtitles in a file of their own.
class DataHelperFormatSubtitleText final : public DataHelperFormatBase {
public:
    /// codecId: the one codec of the container.
    DataHelperFormatSubtitleText(const std::string& container, const std::string& codecId);
};

}  // namespace Kestro::Conf
