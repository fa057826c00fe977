#include "prove/ProofPage.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <set>
#include <sstream>

#include "cli/Failure.h"
#include "cli/PresetFile.h"
#include "prove/ProveTable.h"
#include "report/Text.h"

namespace App {
namespace {

using Proofs = std::vector<ProofRecord>;
using Names = std::vector<std::string>;
using Chosen = std::function<bool(const Proof&)>;

/// As a cell of a table has it.
std::string Cell(std::string text) {
    for (const char* special : {"|", "<", "*", "_"}) {
        for (std::size_t at = 0; (at = text.find(special, at)) != std::string::npos; at += 2) text.insert(at, "\\");
    }
    return text;
}

std::vector<Proof> Rows(const ProofRecord& proof, const Chosen& isChosen) {
    std::vector<Proof> rows;
    std::ranges::copy_if(proof.rows, std::back_inserter(rows), isChosen);
    return rows;
}

/// Different values of all rows, in the order in which they come.
Names Different(const Proofs& proofs, const std::function<std::string(const Proof&)>& of) {
    Names names;
    std::set<std::string> known;
    for (const ProofRecord& proof : proofs) {
        for (const Proof& row : proof.rows) {
            if (std::string name = of(row); known.insert(name).second) names.push_back(std::move(name));
        }
    }
    return names;
}

class Page {
public:
    Page(const Proofs& proofs, const std::vector<Explanation>& explanations)
        : proofs_(proofs), explanations_(explanations) {}

    std::string Write() {
        WriteRuns();
        WriteCounts("What the rows are about", "row", &Proof::about);
        WriteCounts("Container by container", "container",
                    [](const Proof& row) { return row.format.empty() ? "(none takes it)" : row.format; });
        WriteEncoders();
        WriteReasons(
            Verdict::Refused, "Refused",
            "The helper of one offers it and that of another, or FFmpeg, does not take it. The planner says so "
            "before anything is converted.");
        WriteReasons(Verdict::NoEncoder, "No encoder", "The installed FFmpeg cannot make it.");
        WriteContradictions();
        return out_.str();
    }

private:
    static std::string NameOf(const ProofRecord& proof) {
        return "FFmpeg " + proof.made.ffmpeg.substr(0, proof.made.ffmpeg.find('-'));
    }

    void WriteRuns() {
        out_ << "# Proof\n\n"
                "What the library offers is carried out and looked at: `datahelpers prove -o FILE` makes a clip of a "
                "second (moving\n"
                "picture with grain, two voices with noise, subtitles), converts it into every combination that the "
                "helpers offer, and\n"
                "decodes each result to its end. A row is **proven** when codec, size, rates, layout, colours and "
                "duration are those of\n"
                "the plan, and neither the conversion nor the decoding had anything to complain of.\n\n"
                "All pictures of a container meet all of its sounds, and each of both all subtitles; every value of "
                "each list of an\n"
                "encoder, a filter and a container is set once, of each range the ends; every codec that the library "
                "says a container\n"
                "stores is copied into it. This page is written by `datahelpers prove --page`.\n\n"
                "| | version | on | rows | proven | refused | no encoder | contradicts | took "
                "|\n|---|---|---|---|---|---|---|---|---|\n";
        for (const ProofRecord& proof : proofs_) {
            const Counts counts = Count(proof.rows);
            out_ << "| " << NameOf(proof) << " | " << proof.made.program << " | " << Cell(proof.made.system) << ", "
                 << proof.made.date << " | " << proof.rows.size();
            for (const Verdict verdict : kVerdicts) out_ << " | " << NumberOf(counts, verdict);
            out_ << " | ";
            if (proof.isComplete) {
                out_ << ClockTime(std::round(proof.seconds)) << " with " << proof.jobs << " at once |\n";
            } else {
                out_ << "not complete |\n";
            }
        }
    }

    static std::size_t NumberOf(const Counts& counts, Verdict verdict) {
        const auto found = counts.find(verdict);
        return found == counts.end() ? 0 : found->second;
    }

    template <class Of>
    void WriteCounts(const char* title, const char* column, Of of) {
        const auto name = [&of](const Proof& row) { return std::string(std::invoke(of, row)); };
        out_ << "\n## " << title << "\n\nProven · refused · no encoder · contradicts.\n\n| " << column << " |";
        for (const ProofRecord& proof : proofs_) out_ << " " << NameOf(proof) << " |";
        out_ << "\n|---|";
        for (std::size_t i = 0; i < proofs_.size(); ++i) out_ << "---|";
        for (const std::string& each : Different(proofs_, name)) {
            out_ << "\n| " << each << " |";
            for (const ProofRecord& proof : proofs_) {
                const Counts counts = Count(Rows(proof, [&](const Proof& row) { return name(row) == each; }));
                out_ << " " << NumberOf(counts, Verdict::Proven) << " · " << NumberOf(counts, Verdict::Refused) << " · "
                     << NumberOf(counts, Verdict::NoEncoder) << " · " << NumberOf(counts, Verdict::Contradicts) << " |";
            }
        }
        out_ << "\n";
    }

    /// The rows that encode with it: how many are proven, or why none is.
    std::string EncoderCell(const ProofRecord& proof, StreamType type, const std::string& codec) const {
        const auto encodes = [&](const Proof& row) {
            const auto found = row.codecs.find(type);
            return found != row.codecs.end() && found->second == codec &&
                   std::ranges::find(row.copied, type) == row.copied.end();
        };
        const auto isCopied = [&](const Proof& row) {
            const auto found = row.codecs.find(type);
            return row.verdict == Verdict::Proven && found != row.codecs.end() && found->second == codec &&
                   std::ranges::find(row.copied, type) != row.copied.end();
        };
        const std::vector<Proof> rows = Rows(proof, encodes);
        const std::size_t proven = NumberOf(Count(rows), Verdict::Proven);
        const std::size_t copied = Rows(proof, isCopied).size();
        const std::string copies = copied > 0 ? ", copied " + std::to_string(copied) + " times" : "";
        if (proven > 0 || rows.empty() || (copied > 0 && type == StreamType::Subtitle)) {
            return std::to_string(proven) + copies;
        }
        return "0: " + Cell(rows.front().why) + copies;
    }

    void WriteEncoders() {
        out_ << "\n## Encoder by encoder\n\nRows that are proven with it. Subtitles that are pictures are copied "
                "alone.\n\n| encoder of |";
        for (const ProofRecord& proof : proofs_) out_ << " " << NameOf(proof) << " |";
        out_ << "\n|---|";
        for (std::size_t i = 0; i < proofs_.size(); ++i) out_ << "---|";
        for (const StreamType type : {StreamType::Video, StreamType::Audio, StreamType::Subtitle}) {
            Names codecs = Different(proofs_, [type](const Proof& row) {
                const auto found = row.codecs.find(type);
                return found != row.codecs.end() && row.about != "copy" ? found->second : std::string();
            });
            std::erase(codecs, "");
            std::ranges::sort(codecs);
            for (const std::string& codec : codecs) {
                out_ << "\n| " << KindName(type) << " " << Cell(codec) << " |";
                for (const ProofRecord& proof : proofs_) out_ << " " << EncoderCell(proof, type, codec) << " |";
            }
        }
        out_ << "\n";
    }

    void WriteReasons(Verdict verdict, const char* title, const char* words) {
        out_ << "\n## " << title << "\n\n" << words << "\n";
        for (const ProofRecord& proof : proofs_) {
            const std::vector<Reason> reasons = Reasons(proof.rows, verdict);
            if (reasons.empty()) continue;
            out_ << "\n" << NameOf(proof) << ":\n\n| rows | why | who | one of them |\n|---|---|---|---|\n";
            for (const Reason& reason : reasons) {
                out_ << "| " << reason.count << " | " << Cell(reason.why) << " | " << Cell(reason.by) << " | `"
                     << reason.example << "` |\n";
            }
        }
    }

    void WriteContradictions() {
        out_ << "\n## Contradictions\n\nThe library offers it, and it does not come out as planned.\n";
        for (const Explanation& one : explanations_) {
            const bool isMet =
                std::ranges::any_of(proofs_, [&](const ProofRecord& proof) { return !Explained(proof, &one).empty(); });
            if (!isMet) continue;
            out_ << "\n" << one.explanation << "\n\n";
            WriteRows(&one);
        }
        const bool isOpen = std::ranges::any_of(
            proofs_, [this](const ProofRecord& proof) { return !Explained(proof, nullptr).empty(); });
        if (!isOpen) return;
        out_ << "\n**Not explained:**\n\n";
        WriteRows(nullptr);
    }

    /// The contradictions that this explains; null: that nothing does.
    std::vector<Proof> Explained(const ProofRecord& proof, const Explanation* by) const {
        return Rows(proof, [&](const Proof& row) {
            return row.verdict == Verdict::Contradicts && Explain(row, explanations_) == by;
        });
    }

    void WriteRows(const Explanation* by) {
        std::map<std::string, Names> versions;
        for (const ProofRecord& proof : proofs_) {
            for (const Proof& row : Explained(proof, by)) versions[row.id].push_back(NameOf(proof));
        }
        for (const auto& [id, names] : versions) {
            out_ << "- `" << id << "`";
            if (names.size() < proofs_.size()) out_ << " (" << names.front() << ")";
            out_ << "\n";
        }
    }

    const Proofs& proofs_;
    const std::vector<Explanation>& explanations_;
    std::ostringstream out_;
};

}  // namespace

std::vector<Explanation> ReadExplanations(const std::string& path) {
    std::vector<Explanation> explanations;
    const auto refuse = [&path] {
        throw Failure(ExitStatus::WrongUsage,
                      path + R"( is no list of {"ids": [...], "why": "...", "explanation": "..."}.)");
    };
    const Json json = Json::parse(ReadText(path, "list of explanations"), nullptr, false);
    if (!json.is_array()) refuse();
    for (const Json& one : json) {
        try {
            explanations.push_back({.ids = one.at("ids").get<Names>(),
                                    .why = one.at("why").get<std::string>(),
                                    .explanation = one.at("explanation").get<std::string>()});
        } catch (const Json::exception&) {
            refuse();
        }
    }
    return explanations;
}

const Explanation* Explain(const Proof& row, const std::vector<Explanation>& explanations) {
    const auto isMeant = [&row](const Explanation& one) {
        const auto isIn = [&row](const std::string& text) { return row.id.find(text) != std::string::npos; };
        return (one.ids.empty() || std::ranges::any_of(one.ids, isIn)) && row.why.find(one.why) != std::string::npos;
    };
    const auto found = std::ranges::find_if(explanations, isMeant);
    return found == explanations.end() ? nullptr : &*found;
}

std::string ProofPage(const Proofs& proofs, const std::vector<Explanation>& explanations) {
    return Page(proofs, explanations).Write();
}

}  // namespace App
