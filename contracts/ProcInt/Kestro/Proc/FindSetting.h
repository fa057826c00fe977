#pragma once

#include <span>
#include <string>

#include "Kestro/Conf/SettingRecord.h"
#include "Kestro/Export.h"

namespace Kestro::Proc {

/// The record of any setting, a filter's own or one of Conf::SettingRecord::All, by its tag or path as
/// Conf::SettingRecord::Find takes them; null for others.
KESTRO_PROCINT_API const Conf::SettingRecord* FindSetting(const std::string& path);

/// The records of the filters' own settings.
KESTRO_PROCINT_API std::span<const Conf::SettingRecord> FilterSettings();

}  // namespace Kestro::Proc
