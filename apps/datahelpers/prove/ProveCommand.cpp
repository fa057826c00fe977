#include "prove/ProveCommand.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <iostream>
#include <thread>

#include "cli/Failure.h"
#include "convert/Converter.h"
#include "prove/Combinations.h"
#include "prove/ProofFile.h"
#include "prove/ProofPage.h"
#include "prove/ProveRun.h"
#include "prove/ProveTable.h"
#include "report/Text.h"

namespace App {
namespace {

using Clock = std::chrono::steady_clock;

std::vector<Combination> Wanted(const ProveOptions& options) {
    std::vector<Combination> wanted = AllCombinations();
    if (options.isSample) wanted = Sample(wanted);
    if (options.only.empty()) return wanted;
    std::erase_if(wanted, [&](const Combination& row) {
        const std::string name = row.about + " " + row.Id() + " ";
        return std::ranges::none_of(options.only,
                                    [&](const std::string& text) { return name.find(text) != std::string::npos; });
    });
    if (wanted.empty()) throw Failure(ExitStatus::WrongUsage, "No row has that in its name.");
    return wanted;
}

/// The proof of this generation of FFmpeg among the files; none: they are of others.
std::optional<ProofRecord> Standard(const ProveOptions& options) {
    for (const std::string& path : options.against) {
        ProofRecord record = ReadProof(path);
        if (record.made.Generation() == Circumstances::Here().Generation()) return record;
    }
    return std::nullopt;
}

/// What was proven then and is not now.
std::vector<Proof> Lost(const ProofRecord& standard, const std::vector<Proof>& rows) {
    std::vector<Proof> lost;
    for (const Proof& row : rows) {
        const Proof* before = standard.Find(row.id);
        if (before != nullptr && before->verdict == Verdict::Proven && row.verdict != Verdict::Proven) {
            lost.push_back(row);
        }
    }
    return lost;
}

Json RowsJson(const std::vector<Proof>& rows) {
    Json json = Json::array();
    for (const Proof& row : rows) json.push_back(ToJson(row));
    return json;
}

}  // namespace

Outcome ProveOffers(const ProveOptions& asked, bool asJson) {
    ProveOptions options = asked;
    if (options.jobs == 0) options.jobs = std::max(1U, std::thread::hardware_concurrency());
    const std::optional<ProofRecord> standard = Standard(options);
    if (!options.against.empty() && !standard) {
        const std::string note = "Skipped: there is no proof of this generation of FFmpeg to hold it against.";
        if (!asJson) std::cout << note << "\n";
        return {{{"skipped", note}}};
    }
    CheckConverter();
    const auto begun = Clock::now();
    std::vector<Combination> pending = Wanted(options);
    const std::size_t count = pending.size();
    std::optional<ProofWriter> file;
    std::vector<Proof> rows;
    if (!options.file.empty()) {
        file.emplace(options.file, Circumstances::Here());
        rows = file->Before().rows;
        std::erase_if(pending, [&](const Combination& one) { return file->Before().Find(one.Id()) != nullptr; });
    }
    const auto onDone = [&](const Proof& proof) {
        if (file) file->Add(proof);
        rows.push_back(proof);
    };
    try {
        ProveAll(pending, options, asJson, onDone);
    } catch (const Failure& failure) {
        if (static_cast<int>(failure.Status()) < 128) throw;
        const std::string rest = file ? "; the same command goes on with the rest." : ".";
        throw Failure(failure.Status(), "Interrupted: " + std::to_string(rows.size()) + " of " + std::to_string(count) +
                                            " rows are done" + rest);
    }
    const double seconds = std::chrono::duration<double>(Clock::now() - begun).count();
    const bool isWhole = options.only.empty() && !options.isSample;
    if (file && isWhole && !pending.empty()) file->End(seconds, options.jobs);
    if (!asJson) PrintProof(std::cout, rows, TerminalWidth(STDOUT_FILENO));

    std::vector<Proof> wrong;
    if (standard) {
        wrong = Lost(*standard, rows);
    } else {
        std::ranges::copy_if(rows, std::back_inserter(wrong),
                             [](const Proof& row) { return row.verdict == Verdict::Contradicts; });
    }
    if (standard && !asJson) {
        std::cout << "\n" << wrong.size() << " of what was proven before are not proven now\n";
        for (const Proof& row : wrong) std::cout << "  " << row.id << ": " << row.why << "\n";
    }
    return {{{"rows", rows.size()},
             {"counts", ToJson(Count(rows))},
             {standard ? "lost" : "contradictions", RowsJson(wrong)},
             {"seconds", seconds},
             {"jobs", options.jobs}},
            wrong.empty() ? ExitStatus::Done : ExitStatus::ConversionFailed};
}

Outcome WriteProofPage(const ProveOptions& options, bool asJson) {
    std::vector<ProofRecord> proofs;
    for (const std::string& path : options.pages) proofs.push_back(ReadProof(path));
    const std::vector<Explanation> explanations =
        options.explained.empty() ? std::vector<Explanation>() : ReadExplanations(options.explained);
    const std::string page = ProofPage(proofs, explanations);
    if (!asJson) std::cout << page;
    std::vector<Proof> open;
    for (const ProofRecord& proof : proofs) {
        std::ranges::copy_if(proof.rows, std::back_inserter(open), [&](const Proof& row) {
            return row.verdict == Verdict::Contradicts && Explain(row, explanations) == nullptr;
        });
    }
    return {{{"page", page}, {"unexplained", RowsJson(open)}},
            open.empty() ? ExitStatus::Done : ExitStatus::ConversionFailed};
}

}  // namespace App
