#include "report/HelperReport.h"

#include <algorithm>
#include <map>
#include <ostream>

#include "Kestro/Conf/IFormatCodec.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Conf/StreamRecord.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/FFWrapper/EncoderNameFromCodecId.h"
#include "Kestro/FFWrapper/MuxerNames.h"
#include "Kestro/Planner/Automatic.h"
#include "Kestro/Planner/Domain.h"
#include "Kestro/Planner/Fits.h"
#include "Kestro/Planner/Json.h"
#include "Kestro/Planner/Text.h"
#include "Kestro/Proc/FilterRecord.h"
#include "Kestro/Proc/FindSetting.h"

#include "report/SettingsText.h"
#include "report/Text.h"

namespace App {
namespace {

using Kestro::Conf::IFormatCodec;
using Kestro::Conf::IPreset;
using Kestro::Conf::StreamType;
using Kestro::Core::Property;
using Kestro::FFWrapper::MuxerExists;
using Kestro::FFWrapper::MuxerName;
using Planner::AutomaticSetting;
using Planner::Domain;
using Planner::HelperKind;
using Planner::HelperPtr;

ListEntry FormatEntry(const std::string& name, const Kestro::Conf::IDataHelper& helper) {
    const std::string muxer = MuxerName(name);
    ListEntry entry{name, {{"muxer", MuxerExists(muxer) ? muxer : std::string()}}};
    const Property defaults = helper.GetDefaultSettings();
    for (const Property& stream : defaults[IPreset::KEY_STREAMS]) {
        for (const Property& node : stream) {
            if (!node.ChildExists(IFormatCodec::TAG_CODEC_ID)) continue;
            entry.facts.emplace_back(stream[IPreset::KEY_TYPE_ID].GetString(),
                                     node[IFormatCodec::TAG_CODEC_ID].GetString());
        }
    }
    return entry;
}

/// How many containers offer the codec: "12" or "none".
std::string Carriers(StreamType type, const std::string& codec) {
    static const auto counts = [] {
        std::map<std::pair<StreamType, std::string>, int> all;
        for (const std::string& container : Planner::HelperNames(Planner::kFormats)) {
            for (const StreamType one : {StreamType::Video, StreamType::Audio}) {
                for (const std::string& offered : Planner::OfferedCodecs(container, one)) ++all[{one, offered}];
            }
        }
        return all;
    }();
    const auto found = counts.find({type, codec});
    return found != counts.end() ? std::to_string(found->second) : "none";
}

ListEntry MakeEntry(const HelperKind& kind, const std::string& name) {
    if (&kind == &Planner::kFormats) return FormatEntry(name, *Planner::FindHelper(kind, name));
    if (&kind == &Planner::kFilters) {
        const StreamType type = Kestro::Proc::FilterRecord::Find(name)->type;
        return {name, {{"type", Kestro::Conf::StreamRecord::Find(type).typeId}}};
    }
    // Left to the program, the codec is the container's default.
    if (name == IFormatCodec::CODEC_ID_AUTO) return {name, {}};
    const StreamType type = &kind == &Planner::kVideoCodecs ? StreamType::Video : StreamType::Audio;
    return {name, {{"encoder", Kestro::FFWrapper::EncoderNameFromCodecId(name)}, {"containers", Carriers(type, name)}}};
}

Json TreeJson(const Property& settings) { return Json::parse(Planner::ToJson(settings)); }

/// {"values": [{"name", "value"}...]} or {"min", "max", "step"} or {"description"}.
Json DomainJson(const Domain& domain) {
    Json json = Json::object();
    if (domain.isList) {
        Json& values = json["values"] = Json::array();
        for (const Domain::Entry& entry : domain.entries) {
            values.push_back({{"name", entry.name}, {"value", TreeJson(entry.value)}});
        }
        return json;
    }
    if (domain.min) json["min"] = TreeJson(*domain.min);
    if (domain.max) json["max"] = TreeJson(*domain.max);
    if (domain.step) json["step"] = TreeJson(*domain.step);
    if (!domain.min && !domain.max) json["description"] = domain.description;
    return json;
}

void PrintParagraph(std::ostream& out, const std::string& text, std::size_t indent, std::size_t width) {
    out << std::string(indent, ' ') << Wrapped(text, indent, indent + 2, width) << "\n";
}

std::string Title(const std::string& text) { return text + "\n"; }

/// The automatic value that a rule of the sheet accepts beside what is no list; null where there is none.
const Property* UnlistedAutomatic(const HelperSheet& sheet, const Kestro::Conf::IValidationRule& rule) {
    const AutomaticSetting* setting = sheet.isAutomatic ? Planner::FindAutomaticSetting(rule.GetSecondName()) : nullptr;
    if (setting == nullptr) return nullptr;
    const auto constraint = rule.GetSecondConstraint();
    return !Planner::DescribeDomain(*constraint).isList && constraint->IsValid(setting->value) ? &setting->value
                                                                                               : nullptr;
}

}  // namespace

HelperList ListHelpers(const HelperKind& kind) {
    HelperList list{.kind = &kind, .entries = {}};
    for (const std::string& name : Planner::HelperNames(kind)) list.entries.push_back(MakeEntry(kind, name));
    return list;
}

Json ToJson(const HelperList& list) {
    Json entries = Json::array();
    for (const ListEntry& entry : list.entries) {
        Json& json = entries.emplace_back(Json{{"name", entry.name}});
        for (const auto& [key, value] : entry.facts) json[key] = value.empty() ? Json() : Json(value);
    }
    return entries;
}

void Print(std::ostream& out, const HelperList& list) {
    std::size_t longest = 0;
    for (const ListEntry& entry : list.entries) longest = std::max(longest, entry.name.size());
    out << list.kind->plural << "\n";
    for (const ListEntry& entry : list.entries) {
        std::string facts;
        for (const auto& [key, value] : entry.facts) {
            if (!facts.empty()) facts += ", ";
            facts += value.empty() ? "no " + key + " in the installed FFmpeg" : key + " " + value;
        }
        out << "  " << entry.name;
        if (!facts.empty()) out << std::string(longest - entry.name.size() + 2, ' ') << facts;
        out << "\n";
    }
}

Json ToJson(const std::vector<KnownPreset>& presets) {
    Json entries = Json::array();
    for (const KnownPreset& preset : presets) entries.push_back({{"name", preset.name}, {"file", preset.file}});
    return entries;
}

void Print(std::ostream& out, const std::vector<KnownPreset>& presets) {
    std::size_t longest = 0;
    for (const KnownPreset& preset : presets) longest = std::max(longest, preset.name.size());
    out << "presets\n";
    for (const KnownPreset& preset : presets) {
        const std::string gap(longest - preset.name.size() + 2, ' ');
        out << "  " << Planner::Printable(preset.name) << gap << Planner::Printable(preset.file) << "\n";
    }
}

HelperSheet ShowHelper(const HelperKind& kind, const std::string& name, bool isAutomatic) {
    const auto find = isAutomatic ? Planner::FindAutomaticHelper : Planner::FindHelper;
    const HelperPtr helper = find(kind, name);
    HelperSheet sheet{.kind = &kind,
                      .name = name,
                      .isAutomatic = isAutomatic,
                      .defaults = helper->GetDefaultSettings(),
                      .filters = {},
                      .constraints = {},
                      .rules = {}};
    helper->GetRequiredFilters(sheet.filters);
    helper->FillConstraints(sheet.constraints);
    helper->FillValidationRules(sheet.rules);
    return sheet;
}

Json ToJson(const HelperSheet& sheet) {
    Json json{{"kind", sheet.kind->name}, {"name", sheet.name}, {"auto", sheet.isAutomatic}};
    json["defaults"] = Json{{sheet.defaults.Name(), TreeJson(sheet.defaults)}};
    Json& filters = json["filters"] = Json::array();
    for (const auto& [classId, implementation] : sheet.filters) {
        filters.push_back({{"filter", classId}, {"implementation", implementation}});
    }
    Json& constraints = json["constraints"] = Json::array();
    for (const auto& [path, constraint] : sheet.constraints) {
        Json entry{{"path", path}};
        if (const auto* setting = Kestro::Proc::FindSetting(path)) {
            entry.update({{"label", setting->label}, {"unit", setting->unit}, {"help", setting->help}});
        }
        entry.update(DomainJson(Planner::DescribeDomain(*constraint)));
        constraints.push_back(std::move(entry));
    }
    Json& rules = json["rules"] = Json::array();
    for (const auto& [path, rule] : sheet.rules) {
        const auto half = [](const std::string& setting, const Kestro::Conf::IPropertyConstraint& constraint) {
            Json entry{{"path", setting}};
            entry.update(DomainJson(Planner::DescribeDomain(constraint)));
            return entry;
        };
        Json then = half(rule->GetSecondName(), *rule->GetSecondConstraint());
        if (const Property* automatic = UnlistedAutomatic(sheet, *rule)) then["auto"] = TreeJson(*automatic);
        rules.push_back({{"when", half(rule->GetFirstName(), *rule->GetFirstConstraint())}, {"then", then}});
    }
    return json;
}

void Print(std::ostream& out, const HelperSheet& sheet, std::size_t width) {
    out << sheet.kind->words << " " << sheet.name << (sheet.isAutomatic ? ", with its automatic choices" : "") << "\n\n"
        << Title("Default settings");
    Property root;
    root.SetChild(sheet.defaults.Name(), sheet.defaults);
    PrintTree(out, root, 2);
    if (!sheet.filters.empty()) {
        out << "\n" << Title("Filters before the encoder");
        for (const auto& [classId, implementation] : sheet.filters) {
            out << "  " << classId << (implementation.empty() ? "" : " (" + implementation + ")") << "\n";
        }
    }
    if (!sheet.constraints.empty()) {
        out << "\n" << Title("Accepted values");
        for (const auto& [path, constraint] : sheet.constraints) {
            const Domain domain = Planner::DescribeDomain(*constraint);
            PrintParagraph(out, path + ": " + (Planner::ListInWords(Planner::AllowedValues(domain))), 2, width);
        }
    }
    if (!sheet.rules.empty()) {
        out << "\n" << Title("Rules");
        for (const auto& [path, rule] : sheet.rules) {
            std::string words = Planner::InWords(*rule);
            if (const Property* automatic = UnlistedAutomatic(sheet, *rule)) {
                words.pop_back();
                words += ", or Auto = " + Kestro::Core::PropertyValueToString(*automatic) + ".";
            }
            PrintParagraph(out, words, 2, width);
        }
    }
}

}  // namespace App
