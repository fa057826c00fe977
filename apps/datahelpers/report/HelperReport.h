#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "Kestro/Core/Property.h"
#include "Kestro/Planner/Helpers.h"

#include "cli/PresetFile.h"
#include "report/ReportJson.h"

/// What `list` and `show` tell of the library's helpers.
namespace App {

namespace Planner = Kestro::Planner;

/// One line of a list: the helper's name and the facts that are worth a column.
struct ListEntry {
    std::string name;
    std::vector<std::pair<std::string, std::string>> facts;  ///< (key, value); an empty value: there is none
};

struct HelperList {
    const Planner::HelperKind* kind;
    std::vector<ListEntry> entries;
};

HelperList ListHelpers(const Planner::HelperKind& kind);
Json ToJson(const HelperList& list);
void Print(std::ostream& out, const HelperList& list);

Json ToJson(const std::vector<KnownPreset>& presets);
void Print(std::ostream& out, const std::vector<KnownPreset>& presets);

/// Everything that one helper has to say.
struct HelperSheet {
    const Planner::HelperKind* kind;
    std::string name;
    bool isAutomatic;  ///< with the choices that leave a setting to the program
    Kestro::Core::Property defaults;
    Kestro::Conf::FilterList filters;
    Kestro::Conf::ConstraintMap constraints;
    Kestro::Conf::ValidationRuleList rules;
};

/// Throws Planner::NotAcceptable (UnknownName) for a name that there is not.
HelperSheet ShowHelper(const Planner::HelperKind& kind, const std::string& name, bool isAutomatic);
Json ToJson(const HelperSheet& sheet);
void Print(std::ostream& out, const HelperSheet& sheet, std::size_t width);

}  // namespace App
