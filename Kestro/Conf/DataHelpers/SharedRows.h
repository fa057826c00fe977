#pragma once

#include "Kestro/Conf/DataHelpers/Sheet.h"
#include "Kestro/Conf/IFormatCodec.h"

/// Settings that the sheets of encoders and of containers share.
namespace Kestro::Conf {

/// The encoders' extradata goes into the container's header.
inline constexpr SettingRow kGlobalHeader{.tag = IFormatCodec::TAG_GLOBAL_HEADER, .initial = true};

}  // namespace Kestro::Conf
