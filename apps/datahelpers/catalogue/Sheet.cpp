#include "catalogue/Sheet.h"

#include <algorithm>

#include "Kestro/Conf/IFormatCodec.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/Planner/Domain.h"
#include "Kestro/Planner/Json.h"
#include "Kestro/Proc/FindSetting.h"

#include "catalogue/Page.h"

namespace App::Catalogue {
namespace {

using Kestro::Conf::IFormatCodec;
using Kestro::Conf::IPreset;
using Kestro::Conf::IPropertyConstraint;
using Kestro::Conf::IValidationRule;
using Kestro::Conf::SettingRecord;
using Kestro::Core::Property;
using Kestro::Core::PropertyValueToString;
using Planner::Domain;

/// One row of the table of settings.
struct Setting {
    std::string path;
    const Property* initial = nullptr;
    boost::intrusive_ptr<IPropertyConstraint> accepted = {};
    boost::intrusive_ptr<IPropertyConstraint> acceptedAutomatically = {};
};

/// A container's streams and its lists of codecs have a section of their own.
bool IsToldElsewhere(const std::string& path) {
    const std::string streams = IPreset::KEY_STREAMS + Property::SEPARATOR;
    return path.starts_with(streams) && path.ends_with(Property::SEPARATOR + IFormatCodec::TAG_CODEC_ID);
}

/// What says which helper it is: its page does.
bool IsItsName(const std::string& path) {
    return path == IFormatCodec::TAG_CODEC_ID || path == Kestro::Conf::IFormatFile::TAG_CONTAINER;
}

void AddDefaults(const Property& node, const std::string& path, std::vector<Setting>& settings) {
    for (const Property& child : node) {
        const std::string childPath = path.empty() ? child.Name() : path + Property::SEPARATOR + child.Name();
        if (path.empty() && child.Name() == IPreset::KEY_STREAMS) continue;
        if (child.Count() > 0) {
            AddDefaults(child, childPath, settings);
        } else if (!child.IsEmpty() && !IsItsName(childPath)) {
            settings.push_back({.path = childPath, .initial = &child});
        }
    }
}

Setting& At(std::vector<Setting>& settings, const std::string& path) {
    const auto found = std::ranges::find(settings, path, &Setting::path);
    return found != settings.end() ? *found : settings.emplace_back(Setting{.path = path});
}

std::vector<Setting> SettingsOf(const HelperSheet& sheet, const HelperSheet& automatic) {
    std::vector<Setting> settings;
    AddDefaults(sheet.defaults, {}, settings);
    for (const auto& [path, constraint] : sheet.constraints) {
        if (!IsToldElsewhere(path)) At(settings, path).accepted = constraint;
    }
    for (const auto& [path, constraint] : automatic.constraints) {
        if (!IsToldElsewhere(path)) At(settings, path).acceptedAutomatically = constraint;
    }
    return settings;
}

Markup Values(const std::vector<std::string>& values) {
    Markup list;
    for (const std::string& value : values) list += (list.IsEmpty() ? "" : " ") + Element("code", value);
    return list;
}

/// A domain that is described in words alone has no numbers for a unit to follow.
bool HasNumbers(const Domain& domain) { return domain.isList || domain.min || domain.max; }

Markup Accepted(const Setting& setting, const std::string& unit) {
    if (!setting.accepted) {
        const bool isFlag = setting.initial != nullptr && setting.initial->Type() == Kestro::PropertyTypes::Bool;
        return isFlag ? Values({"true", "false"}) : Markup("not restricted");
    }
    const Domain domain = Planner::DescribeDomain(*setting.accepted);
    const std::vector<std::string> values = Planner::AllowedValues(domain);
    Markup accepted = domain.isList ? Values(values) : Markup(values.front());
    if (!unit.empty() && HasNumbers(domain)) accepted += " " + unit;
    if (!setting.acceptedAutomatically) return accepted;
    std::vector<std::string> more = Planner::AllowedValues(Planner::DescribeDomain(*setting.acceptedAutomatically));
    std::erase_if(more,
                  [&values](const std::string& value) { return std::ranges::find(values, value) != values.end(); });
    if (!more.empty()) accepted += "; left to the program: " + Values(more);
    return accepted;
}

Markup Row(const Setting& setting) {
    const SettingRecord* record = Kestro::Proc::FindSetting(setting.path);
    const std::string unit = record != nullptr ? record->unit : "";
    Markup initial = "\u2013";
    if (setting.initial != nullptr) {
        initial = Code(PropertyValueToString(*setting.initial));
        if (!unit.empty()) initial += " " + unit;
    }
    const Markup name = (record != nullptr ? Markup(record->label) + " " : Markup()) + Code(setting.path);
    return Element("tr", Element("th", {{"scope", "row"}}, name) + Element("td", {{"data-label", "Default"}}, initial) +
                             Element("td", {{"data-label", "Accepted"}}, Accepted(setting, unit)) +
                             Element("td", record != nullptr ? record->help : ""));
}

/// "Sample rate AudioResample/Resampler/SampleRate".
Markup Named(const std::string& path) {
    const SettingRecord* record = Kestro::Proc::FindSetting(path);
    if (record == nullptr) return Code(path);
    return Element("strong", record->label) + " (" + Code(path) + ")";
}

/// Whether the rule's condition is the helper's own codec, and so always met.
bool IsAlways(const IValidationRule& rule, const HelperSheet& sheet) {
    const Property* own = sheet.defaults.FindByPath(IFormatCodec::TAG_CODEC_ID);
    if (own == nullptr || rule.GetFirstName() != sheet.defaults.Name() + Property::SEPARATOR + own->Name())
        return false;
    const Domain domain = Planner::DescribeDomain(*rule.GetFirstConstraint());
    return domain.entries.size() == 1 && domain.entries.front().value == *own;
}

Markup Sentence(const IValidationRule& rule, const HelperSheet& sheet) {
    const SettingRecord* second = Kestro::Proc::FindSetting(rule.GetSecondName());
    const Domain domain = Planner::DescribeDomain(*rule.GetSecondConstraint());
    Markup sentence = Named(rule.GetSecondName()) + " must be " + Planner::InWords(domain);
    if (second != nullptr && *second->unit != '\0' && HasNumbers(domain)) sentence += std::string(" ") + second->unit;
    if (IsAlways(rule, sheet)) return Element("li", sentence + ".");
    const Markup condition =
        Markup("When ") + Named(rule.GetFirstName()) + " is " + Planner::InWords(*rule.GetFirstConstraint()) + ", ";
    return Element("li", condition + sentence + ".");
}

Markup Defaults(const HelperSheet& sheet) {
    const Json settings = Json::parse(Planner::ToJson(sheet.defaults));
    const std::string text = Json{{sheet.defaults.Name(), settings}}.dump(2);
    return Element("details", {{"class", "json"}},
                   Element("summary", "The defaults as JSON, for a preset") +
                       Element("pre", {{"tabindex", "0"}}, Element("code", text)));
}

}  // namespace

Markup ToMarkup(const Section& section) {
    if (section.content.IsEmpty()) return {};
    return Element("section", {{"aria-labelledby", section.id}},
                   Element("h2", {{"id", section.id}}, section.heading) + section.content);
}

Markup WithContents(const std::vector<Section>& sections) {
    Markup links;
    Markup content;
    for (const Section& section : sections) {
        if (!section.content.IsEmpty()) links += Element("li", Link("#" + section.id, section.heading));
        content += ToMarkup(section);
    }
    return Element("nav", {{"class", "contents"}, {"aria-label", "On this page"}}, Element("ul", links)) + content;
}

Markup ScrollingTable(const std::string& name, const std::vector<Column>& columns, const Markup& rows,
                      const Markup& caption) {
    Markup heads;
    for (const Column& column : columns) {
        heads += Element("th", {{"scope", "col"}, {column.isNumber ? "class" : "", "number"}}, column.head);
    }
    const Markup title = caption.IsEmpty() ? Markup() : Element("caption", caption);
    return Element("div", {{"class", "scroll"}, {"role", "group"}, {"tabindex", "0"}, {"aria-label", name}},
                   Element("table", title + Element("thead", Element("tr", heads)) + Element("tbody", rows)));
}

Section SettingsSection(const HelperSheet& sheet) {
    const HelperSheet automatic = ShowHelper(*sheet.kind, sheet.name, true);
    Markup rows;
    for (const Setting& setting : SettingsOf(sheet, automatic)) rows += Row(setting);
    return {"settings", "Settings",
            ScrollingTable("Settings", {"Setting", "Default", "Accepted", "What it does"}, rows) + Defaults(sheet)};
}

Section RulesSection(const HelperSheet& sheet) {
    Markup sentences;
    for (const auto& [path, rule] : sheet.rules) sentences += Sentence(*rule, sheet);
    return {"rules", "Rules", sentences.IsEmpty() ? Markup() : Element("ul", {{"class", "rules"}}, sentences)};
}

Section FiltersSection(const HelperSheet& sheet, const Knowledge& knowledge, const std::string& base) {
    Markup items;
    for (const auto& [classId, implementation] : sheet.filters) {
        const auto filter = std::ranges::find(knowledge.filters, classId, &HelperSheet::name);
        const SettingRecord* record = Kestro::Proc::FindSetting(classId);
        Markup item =
            filter != knowledge.filters.end() ? Link(base + AddressOf(*filter), Code(classId)) : Code(classId);
        if (record != nullptr) item += std::string(" \u2013 ") + record->help;
        if (!implementation.empty()) item += " (" + implementation + ")";
        items += Element("li", item);
    }
    return {"filters", "Filters before the encoder", items.IsEmpty() ? Markup() : Element("ol", items)};
}

}  // namespace App::Catalogue
