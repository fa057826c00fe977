#include <algorithm>
#include <map>

#include "catalogue/Pages.h"
#include "catalogue/ProofSummary.h"
#include "catalogue/Sheet.h"

namespace App::Catalogue {
namespace {

using Rows = std::vector<const ProofRow*>;

Markup CountsTable(const Rows& rows) {
    std::map<std::string, std::map<std::string, std::size_t>> counts;
    for (const ProofRow* row : rows) ++counts[row->about][row->result];
    std::vector<Column> heads = {"What was tried"};
    for (const auto& [result, words] : ProofResults()) heads.emplace_back(result, true);
    Markup body;
    for (const auto& [about, ofResult] : counts) {
        Markup cells = Element("th", {{"scope", "row"}}, about.empty() ? "other" : about);
        for (const auto& [result, words] : ProofResults()) {
            const auto found = ofResult.find(result);
            cells += Element("td", {{"class", "number"}},
                             found != ofResult.end() ? std::to_string(found->second) : "\u2013");
        }
        body += Element("tr", cells);
    }
    return ScrollingTable("Trials", heads, body);
}

std::string WhyText(const ProofRow& row) {
    if (row.by.empty() || row.why.empty()) return row.by + row.why;
    return row.by + ": " + row.why;
}

/// The rows of a result: those that need a reason with it, the others as names.
Markup Details(const Rows& rows, const std::string& result, const std::string& words) {
    Markup items;
    std::size_t count = 0;
    for (const ProofRow* row : rows) {
        if (row->result != result) continue;
        ++count;
        Markup item = Code(row->id);
        const std::string why = WhyText(*row);
        if (!why.empty()) item += " \u2013 " + why;
        items += Element("li", item);
    }
    if (count == 0) return {};
    const bool isOpen = result == "contradicts";
    return Element(
        "details", {{"class", "proof " + result}, {isOpen ? "open" : "", ""}},
        Element("summary", std::to_string(count) + " " + words) + Element("ul", {{"class", "trials"}}, items));
}

std::string Where(const Proof& proof) {
    std::string where = "FFmpeg " + proof.ffmpeg;
    if (!proof.system.empty()) where += ", " + proof.system;
    if (!proof.date.empty()) where += ", " + proof.date;
    return where;
}

Markup Told(const Rows& rows) {
    Markup told = CountsTable(rows);
    for (const std::string result : {"contradicts", "no-encoder", "refused", "proven"}) {
        const auto found = std::ranges::find(ProofResults(), result, &std::pair<std::string, std::string>::first);
        told += Details(rows, result, found->second);
    }
    return told;
}

}  // namespace

Markup ProofOf(const Proof& proof, const std::function<bool(const ProofRow&)>& belongs) {
    Rows rows;
    for (const ProofRow& row : proof.rows) {
        if (belongs(row)) rows.push_back(&row);
    }
    if (rows.empty()) return Element("p", "Nothing was tried with it.");
    return Element("p", Where(proof) + ".") + Told(rows);
}

Page ProofPage(const Knowledge& knowledge) {
    const Proof& proof = *knowledge.proof;
    Rows rows;
    for (const ProofRow& row : proof.rows) rows.push_back(&row);
    Markup content = Element("h1", "What was proven") +
                     Element("p", {{"class", "lead"}},
                             Counted(rows.size(), "trial") +
                                 " of what the library says, encoded by FFmpeg and read back: " + Where(proof) + ".");
    if (!proof.isComplete)
        content += Element("p", {{"class", "notice"}}, "The run was broken off: more was to be tried.");
    content += Told(rows);
    return {.path = "proof.html", .title = "What was proven", .content = content, .scripts = {}};
}

}  // namespace App::Catalogue
