#include <algorithm>

#include "Kestro/Planner/Text.h"

#include "catalogue/Pages.h"

namespace App::Catalogue {
namespace {

using Kestro::Conf::StreamRecord;

/// The words by which the filters find a helper.
std::string Searched(const std::string& name, std::vector<std::string> also, const std::string& other) {
    also.insert(also.begin(), name);
    if (!other.empty() && other != name) also.push_back(other);
    return Planner::Join(also);
}

/// The places in Knowledge::codecs of a kind's codecs that containers store.
std::vector<std::size_t> Columns(const Knowledge& knowledge, const StreamRecord& kind) {
    std::vector<std::size_t> columns;
    for (std::size_t i = 0; i < knowledge.codecs.size(); ++i) {
        if (knowledge.codecs[i].kind == &kind && !knowledge.codecs[i].isLeftToProgram) columns.push_back(i);
    }
    return columns;
}

std::string ProofInWords(const Cell& cell, const Proof& proof) {
    if (cell.proof.empty()) return {};
    if (cell.proof == "proven") return "Proven: written by FFmpeg " + proof.ffmpeg + ", and read back as planned.";
    return "With FFmpeg " + proof.ffmpeg + " it came out other than planned: " + cell.proofReason;
}

Markup MakeCell(const Container& container, const Codec& codec, const Cell& cell, const Knowledge& knowledge) {
    const std::string standing = Name(cell.standing);
    const bool isContradicted = cell.proof == "contradicts" && cell.standing != Standing::Doubtful;
    const std::string tried = cell.proof.empty() ? "" : ", " + cell.proof;
    const std::string proof = knowledge.proof ? ProofInWords(cell, *knowledge.proof) : std::string();
    const Markup link = Element("a",
                                {{"href", AddressOf(container) + "#" + AnchorOf(codec.id)},
                                 {"aria-label", codec.id + " in " + container.name + ": " + standing + tried},
                                 {cell.reason.empty() ? "" : "data-why", cell.reason},
                                 {proof.empty() ? "" : "data-proof", proof}},
                                std::string(Symbol(cell.standing)) + (isContradicted ? "!" : ""));
    return Element("td", {{"class", standing + (cell.proof.empty() ? "" : " " + cell.proof)}}, link);
}

Markup RowHead(const Container& container) {
    return Element("th", {{"scope", "row"}}, Link(AddressOf(container), container.name));
}

Markup Row(const Container& container, const std::vector<std::size_t>& columns, const Knowledge& knowledge) {
    Markup cells = RowHead(container);
    for (const std::size_t column : columns) {
        cells += MakeCell(container, knowledge.codecs[column], container.cells[column], knowledge);
    }
    return Element("tr", {{"data-search", Searched(container.name, container.also, container.extension)}}, cells);
}

/// Whether a container takes one codec, as is plain, and refuses all others for the same reason.
bool IsShort(const Container& container, const std::vector<std::size_t>& columns) {
    std::string reason;
    std::size_t taken = 0;
    for (const std::size_t column : columns) {
        const Cell& cell = container.cells[column];
        if (IsTaken(cell.standing)) {
            if (++taken > 1 || cell.standing == Standing::Doubtful || cell.proof == "contradicts") return false;
            continue;
        }
        if (reason.empty()) reason = cell.reason;
        if (reason != cell.reason) return false;
    }
    return taken == 1;
}

Markup ShortRow(const Container& container, const std::vector<std::size_t>& columns, const Knowledge& knowledge) {
    Markup content;
    std::string reason;
    std::string taken;
    for (const std::size_t column : columns) {
        const Cell& cell = container.cells[column];
        if (!IsTaken(cell.standing)) {
            reason = cell.reason;
            continue;
        }
        const Codec& codec = knowledge.codecs[column];
        const std::string words = Name(cell.standing) + (cell.proof.empty() ? "" : ", " + cell.proof);
        taken = codec.id;
        content = Mark(cell.standing, cell.proof) + " " + Link(AddressOf(codec), codec.id) +
                  Element("span", {{"class", "hidden"}}, ", " + words);
    }
    content += Element("span", {{"class", "why"}}, " \u2013 no other: " + reason);
    return Element(
        "tr", {{"data-search", Searched(container.name, container.also, container.extension)}, {"data-only", taken}},
        RowHead(container) + Element("td", {{"class", "only"}, {"colspan", std::to_string(columns.size())}}, content));
}

Markup Head(const std::vector<std::size_t>& columns, const Knowledge& knowledge) {
    Markup heads = Element("th", {{"scope", "col"}, {"class", "corner"}}, "Container");
    for (const std::size_t column : columns) {
        const Codec& codec = knowledge.codecs[column];
        heads += Element("th", {{"scope", "col"}, {"data-search", Searched(codec.id, codec.also, codec.encoder)}},
                         Link(AddressOf(codec), codec.id));
    }
    return Element("thead", Element("tr", heads));
}

Markup Table(const StreamRecord& kind, const Knowledge& knowledge) {
    const std::string word = WordFor(kind.type);
    const std::vector<std::size_t> columns = Columns(knowledge, kind);
    Markup rows;
    Markup shortRows;
    Markup none;
    std::size_t without = 0;
    for (const Container& container : knowledge.containers) {
        const auto isTaken = [&](std::size_t column) { return IsTaken(container.cells[column].standing); };
        if (std::ranges::none_of(columns, isTaken)) {
            ++without;
            none += Element("li", Link(AddressOf(container) + "#" + word, container.name));
        } else if (IsShort(container, columns)) {
            shortRows += ShortRow(container, columns, knowledge);
        } else {
            rows += Row(container, columns, knowledge);
        }
    }
    Markup bodies = Element("tbody", rows);
    if (!shortRows.IsEmpty()) bodies += Element("tbody", {{"class", "short"}}, shortRows);
    const std::string id = "matrix-" + word;
    const Markup caption =
        Element("caption", {{"class", "hidden"}}, std::string("Which container takes which ") + word + " codec");
    Markup section =
        Element("h2", {{"id", id}}, HeadingOf(kind.type)) +
        Element(
            "div",
            {{"class", "matrix"}, {"role", "region"}, {"tabindex", "0"}, {"aria-label", word + " codecs by container"}},
            Element("table", caption + Head(columns, knowledge) + bodies));
    if (without > 0) {
        section += Element(
            "div", {{"class", "none"}},
            Element("p", Counted(without, "container") + (without == 1 ? " takes" : " take") + " no " + word + ":") +
                Element("ul", {{"class", "names"}}, none));
    }
    return Element("section", {{"class", "kind"}, {"data-kind", word}, {"aria-labelledby", id}}, section);
}

Markup Legend(const Knowledge& knowledge) {
    Markup entries;
    const auto add = [&entries](const Markup& mark, const char* name, const char* words) {
        entries += Element("div", Element("dt", mark + " " + name) + Element("dd", words));
    };
    for (const Standing standing :
         {Standing::Default, Standing::Offered, Standing::Stored, Standing::Doubtful, Standing::Refused}) {
        add(Mark(standing), Name(standing), InWords(standing));
    }
    if (knowledge.proof) {
        add(Mark(Standing::Offered, "proven"), "proven", "underlined: FFmpeg wrote it, and it read back as planned");
        const std::string symbol = std::string(Symbol(Standing::Offered)) + "!";
        add(Element("span", {{"class", "mark contradicts"}, {"aria-hidden", "true"}}, symbol), "contradicts",
            "tried, and it came out other than planned");
    }
    return Element("dl", {{"class", "legend"}}, entries);
}

Markup Field(const char* id, const char* label, const char* hint) {
    return Element("div", {{"class", "field"}},
                   Element("label", {{"for", id}}, label) + Void("input", {{"id", id},
                                                                           {"type", "search"},
                                                                           {"placeholder", hint},
                                                                           {"autocomplete", "off"},
                                                                           {"spellcheck", "false"}}));
}

Markup Filters() {
    Markup kinds = Element("option", {{"value", ""}}, "all kinds");
    for (const StreamRecord& kind : StreamRecord::All())
        kinds += Element("option", {{"value", WordFor(kind.type)}}, WordFor(kind.type));
    return Element(
        "form",
        {{"class", "filters"},
         {"id", "filters"},
         {"role", "search"},
         {"aria-label", "Filter the matrix"},
         {"hidden", ""}},
        Field("container", "Container", "mkv, mp4 \u2026") + Field("codec", "Codec", "H.265, aac \u2026") +
            Element("div", {{"class", "field"}},
                    Element("label", {{"for", "kind"}}, "Kind") + Element("select", {{"id", "kind"}}, kinds)) +
            Element("div", {{"class", "field check"}},
                    Void("input", {{"id", "taken"}, {"type", "checkbox"}}) +
                        Element("label", {{"for", "taken"}}, "Hide what is refused throughout")) +
            Element("p", {{"id", "found"}, {"role", "status"}}, {}));
}

Markup Dialog() {
    return Element("dialog", {{"id", "answer"}, {"aria-labelledby", "answer-title"}},
                   Element("h2", {{"id", "answer-title"}}, "\u2026") + Element("p", {{"id", "answer-standing"}}, {}) +
                       Element("p", {{"id", "answer-why"}}, {}) + Element("p", {{"id", "answer-proof"}}, {}) +
                       Element("ul", {{"id", "answer-links"}, {"class", "plain"}}, {}) +
                       Element("form", {{"method", "dialog"}}, Element("button", "Close")));
}

Markup Ways() {
    const auto way = [](const char* to, const std::string& name, const std::string& what) {
        return Element("li", Element("a", {{"href", to}}, Element("strong", name) + Element("span", what)));
    };
    return Element(
        "ul", {{"class", "ways"}},
        way("#filters", "Look it up", "Does this container take that codec? The matrix below, and why not.") +
            way("plan.html", "Plan a conversion",
                "Choose container and codecs; see the settings, what is corrected, and ffmpeg\u2019s command.") +
            way("lists.html", "Read the sheets",
                "Defaults, accepted values and rules of every container, codec and filter."));
}

}  // namespace

Page MatrixPage(const Knowledge& knowledge) {
    const auto codecs = std::ranges::count_if(knowledge.codecs, [](const Codec& one) { return !one.isLeftToProgram; });
    Markup content =
        Element("div", {{"class", "hero"}},
                Element("h1", "What containers, codecs and filters accept") +
                    Element("p", {{"class", "lead"}},
                            "Everything that the DataHelpers library knows of " +
                                Counted(knowledge.containers.size(), "container") + ", " +
                                Counted(static_cast<std::size_t>(codecs), "codec") + " and " +
                                Counted(knowledge.filters.size(), "filter") +
                                ": what goes into what, with which settings, by which rules \u2013 and why not.")) +
        Ways() + Filters() + Legend(knowledge) +
        Element("p", {{"class", "hint"}, {"id", "readout"}}, "Every mark leads to its reason.");
    for (const StreamRecord& kind : StreamRecord::All()) content += Table(kind, knowledge);
    return {.path = "index.html", .title = "Matrix", .content = content + Dialog(), .scripts = {"matrix.js"}};
}

}  // namespace App::Catalogue
