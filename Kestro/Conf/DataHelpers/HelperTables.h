#pragma once

#include "Kestro/Conf/DataHelpers/DataHelpers.h"

/// The registry: which helper answers to which name. A table is built when something is looked for in it first, and is
/// there until the library is unloaded: a program that only loads it does not wait, and where memory is short the call
/// fails. A new helper gets a row here.
namespace Kestro::Conf {

const DataHelperTable& AudioCodecs();  ///< by codec id
const DataHelperTable& VideoCodecs();  ///< by codec id
const DataHelperTable& Formats();      ///< by format name
const DataHelperTable& Filters();      ///< by class id

}  // namespace Kestro::Conf
