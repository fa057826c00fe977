#include "prove/ProveTable.h"

#include <algorithm>
#include <cctype>
#include <iomanip>
#include <ostream>
#include <tuple>

#include "report/Text.h"

namespace App {
namespace {

constexpr int kColumn = 12;
constexpr const char* kAny = "…";

void PrintCounts(std::ostream& out, const std::string& name, Counts counts) {
    std::size_t sum = 0;
    out << std::left << std::setw(kColumn) << name << std::right;
    for (const Verdict verdict : kVerdicts) {
        out << std::setw(kColumn) << counts[verdict];
        sum += counts[verdict];
    }
    out << std::setw(kColumn) << sum << "\n";
}

void PrintReasons(std::ostream& out, const std::vector<Proof>& rows, Verdict verdict, std::size_t width) {
    const std::vector<Reason> reasons = Reasons(rows, verdict);
    if (reasons.empty()) return;
    out << "\n" << VerdictName(verdict) << "\n";
    for (const Reason& reason : reasons) {
        out << std::setw(6) << reason.count << "  "
            << Wrapped(reason.by.empty() || reason.by == reason.why ? reason.why : reason.why + " (" + reason.by + ")",
                       8, 8, width)
            << "\n";
    }
}

/// What the row says, without its own names and values.
std::string Generally(const Proof& row) {
    std::vector<std::string> own{row.format};
    for (const auto& [type, codec] : row.codecs) own.push_back(codec);
    for (const Planner::Change& setting : row.settings) own.push_back(setting.value);
    std::string why = row.why;
    const auto isPart = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '/'; };
    for (const std::string& name : own) {
        for (std::size_t at = 0; !name.empty() && (at = why.find(name, at)) != std::string::npos;) {
            const std::size_t end = at + name.size();
            const bool isWord = (at == 0 || !isPart(why[at - 1])) && (end == why.size() || !isPart(why[end]));
            if (isWord) why.replace(at, name.size(), kAny);
            at += isWord ? std::string(kAny).size() : 1;
        }
    }
    return why;
}

}  // namespace

Counts Count(const std::vector<Proof>& rows) {
    Counts counts;
    for (const Proof& row : rows) ++counts[row.verdict];
    return counts;
}

Json ToJson(const Counts& counts) {
    Json json = Json::object();
    for (const Verdict verdict : kVerdicts) {
        const auto found = counts.find(verdict);
        json[VerdictName(verdict)] = found == counts.end() ? 0 : found->second;
    }
    return json;
}

std::vector<Reason> Reasons(const std::vector<Proof>& rows, Verdict verdict) {
    std::vector<Reason> reasons;
    for (const Proof& row : rows) {
        if (row.verdict != verdict) continue;
        // Which encoders there are none of is what one wants to know.
        const std::string why = verdict == Verdict::NoEncoder ? row.why : Generally(row);
        const auto isSame = [&](const Reason& reason) { return reason.by == row.by && reason.why == why; };
        auto found = std::ranges::find_if(reasons, isSame);
        if (found == reasons.end()) found = reasons.insert(found, {row.by, why, 0, row.id});
        ++found->count;
    }
    std::ranges::stable_sort(reasons, [](const Reason& one, const Reason& other) { return one.count > other.count; });
    return reasons;
}

std::vector<std::string> Subjects(const std::vector<Proof>& rows) {
    std::vector<std::string> subjects;
    for (const Proof& row : rows) {
        if (std::ranges::find(subjects, row.about) == subjects.end()) subjects.push_back(row.about);
    }
    return subjects;
}

void PrintProof(std::ostream& out, const std::vector<Proof>& rows, std::size_t width) {
    out << std::setw(kColumn) << "";
    for (const Verdict verdict : kVerdicts) out << std::setw(kColumn) << VerdictName(verdict);
    out << std::setw(kColumn) << "rows"
        << "\n";
    for (const std::string& subject : Subjects(rows)) {
        std::vector<Proof> own;
        std::ranges::copy_if(rows, std::back_inserter(own), [&](const Proof& row) { return row.about == subject; });
        PrintCounts(out, subject, Count(own));
    }
    PrintCounts(out, "all", Count(rows));
    PrintReasons(out, rows, Verdict::Refused, width);
    PrintReasons(out, rows, Verdict::NoEncoder, width);
    if (Count(rows)[Verdict::Contradicts] == 0) return;
    out << "\ncontradicts\n";
    for (const Proof& row : rows) {
        if (row.verdict == Verdict::Contradicts) {
            out << "  " << Wrapped(row.id + ": " + row.why, 2, 6, width) << "\n";
        }
    }
}

}  // namespace App
