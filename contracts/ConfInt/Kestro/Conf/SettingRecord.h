#pragma once

#include <span>
#include <string>

#include "Kestro/Export.h"

namespace Kestro::Conf {

/// How a form shows one setting, or one node of settings: its heading.
///
/// The texts are English; the functions give them in the user's language, by the catalogues of the domain "core" (see
/// Core::DomainLocalizationManager). The filters' own settings have their records in ProcInt: Proc::FindSetting finds
/// those and these.
struct KESTRO_CONFINT_API SettingRecord {
    const std::string& tag;  ///< the setting's name in every tree: IFormatCodec::TAG_BITRATE
    const char* label;       ///< a few words, which no other setting has: "Bitrate"
    const char* unit;        ///< the unit of its numbers: "bit/s"; empty where there is none
    const char* help;        ///< one line: what it does and what to take

    std::string Label() const;
    std::string Unit() const;
    std::string Help() const;

    /// The record of the setting with that tag, or at that path (its last segment counts: the key of a constraint, the
    /// first or second name of a rule); null for others.
    static const SettingRecord* Find(const std::string& path);
    /// That of the records.
    static const SettingRecord* Find(std::span<const SettingRecord> records, const std::string& path);
    /// Every record, in the order of the vocabulary.
    static std::span<const SettingRecord> All();
};

}  // namespace Kestro::Conf
