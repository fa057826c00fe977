#pragma once

#include "Kestro/Conf/DataHelpers/FormatSheet.h"
#include "Kestro/Conf/DataHelpers/SharedRows.h"
#include "Kestro/Conf/IFormatFile.h"

/// What the sheets of many containers share.
namespace Kestro::Conf {

inline constexpr SettingRow kNotForPsp{.tag = IFormatFile::TAG_PSP_MODE, .initial = false};
inline constexpr SettingRow kNotProgressive{.tag = IFormatFile::TAG_PROGRESSIVE_READ, .initial = false};

/// A container of one picture and many sound and subtitle tracks.
inline constexpr StreamLimits kOneVideoAndMany{.video = 1, .audio = 16, .subtitle = 16, .other = 16};

}  // namespace Kestro::Conf
