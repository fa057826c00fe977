#include <algorithm>

#include "Kestro/Planner/Text.h"
#include "Kestro/Proc/FilterRecord.h"
#include "Kestro/Proc/FindSetting.h"

#include "catalogue/Pages.h"
#include "catalogue/Sheet.h"

namespace App::Catalogue {
namespace {

using Kestro::Conf::StreamRecord;

Markup Head(const std::string& address, const std::string& name) {
    return Element("th", {{"scope", "row"}}, Link(address, name));
}

Markup Searched(const Markup& cells, const std::string& words) {
    return Element("tr", {{"data-search", words}}, cells);
}

Section Containers(const Knowledge& knowledge) {
    Markup rows;
    for (const Container& container : knowledge.containers) {
        Markup cells = Head(AddressOf(container), container.name) + Element("td", Code("." + container.extension)) +
                       Element("td", container.muxer.empty() ? Markup("none") : Code(container.muxer));
        for (const StreamRecord& kind : StreamRecord::All()) {
            const std::string codec = container.DefaultCodec(kind);
            cells += Element("td", codec.empty() ? "\u2013" : codec);
        }
        rows += Searched(cells, Planner::Join(container.also) + " " + container.extension);
    }
    return {"formats", "Containers",
            ScrollingTable("Containers", {"Container", "Files", "Muxer", "Default video", "audio", "subtitles"}, rows)};
}

Section Codecs(const StreamRecord& kind, const Knowledge& knowledge) {
    Markup rows;
    for (std::size_t i = 0; i < knowledge.codecs.size(); ++i) {
        const Codec& codec = knowledge.codecs[i];
        if (codec.kind != &kind) continue;
        std::size_t offered = 0;
        std::size_t stored = 0;
        for (const Container& container : knowledge.containers) {
            offered += IsOffered(container.cells[i].standing) ? 1 : 0;
            stored += container.cells[i].standing == Standing::Stored ? 1 : 0;
        }
        rows += Searched(Head(AddressOf(codec), codec.id) +
                             Element("td", codec.encoder.empty() ? Markup("\u2013") : Code(codec.encoder)) +
                             Element("td", {{"class", "number"}}, std::to_string(offered)) +
                             Element("td", {{"class", "number"}}, std::to_string(stored)),
                         Planner::Join(codec.also));
    }
    const std::string heading = HeadingOf(kind.type);
    return {WordFor(kind.type), heading,
            ScrollingTable(heading, {"Codec", "Encoder", {"Offered by", true}, {"Only kept by", true}}, rows)};
}

Section Filters(const Knowledge& knowledge) {
    Markup rows;
    for (const HelperSheet& filter : knowledge.filters) {
        const Kestro::Conf::SettingRecord* record = Kestro::Proc::FindSetting(filter.name);
        rows += Searched(Head(AddressOf(filter), filter.name) +
                             Element("td", WordFor(Kestro::Proc::FilterRecord::Find(filter.name)->type)) +
                             Element("td", record != nullptr ? record->help : ""),
                         record != nullptr ? record->label : "");
    }
    return {"filters", "Filters", ScrollingTable("Filters", {"Filter", "Works on", "What it does"}, rows)};
}

}  // namespace

Page ListsPage(const Knowledge& knowledge) {
    Markup content =
        Element("h1", "Containers, codecs, filters") +
        Element("form", {{"class", "filters"}, {"role", "search"}, {"aria-label", "Filter the lists"}, {"hidden", ""}},
                Element("div", {{"class", "field"}},
                        Element("label", {{"for", "find"}}, "Find") +
                            Void("input", {{"id", "find"},
                                           {"type", "search"},
                                           {"placeholder", "mkv, H.265, resize \u2026"},
                                           {"autocomplete", "off"},
                                           {"spellcheck", "false"}})) +
                    Element("p", {{"id", "found"}, {"role", "status"}}, {}));
    std::vector<Section> sections = {Containers(knowledge)};
    for (const StreamRecord& kind : StreamRecord::All()) sections.push_back(Codecs(kind, knowledge));
    sections.push_back(Filters(knowledge));
    return {.path = "lists.html",
            .title = "Containers, codecs, filters",
            .content = content + WithContents(sections),
            .scripts = {"pages.js"}};
}

}  // namespace App::Catalogue
