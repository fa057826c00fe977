#pragma once

#include "Kestro/Conf/DataHelpers/DataHelpers.h"

/// The registry: which helper answers to which name. Built when the library is loaded; a new helper gets a row here.
namespace Kestro::Conf {

extern const DataHelperTable kAudioCodecs;  ///< by codec id
extern const DataHelperTable kVideoCodecs;  ///< by codec id
extern const DataHelperTable kFormats;      ///< by format name
extern const DataHelperTable kFilters;      ///< by class id

}  // namespace Kestro::Conf
