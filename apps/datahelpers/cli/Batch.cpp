#include "cli/Batch.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <map>

#include "Kestro/Planner/FileNames.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Text.h"

#include "cli/BatchProgress.h"
#include "cli/PresetFile.h"
#include "convert/ChildProcess.h"
#include "convert/Converter.h"
#include "convert/Progress.h"
#include "report/Text.h"

namespace App {
namespace {

using Planner::Printable;

/// One file of a batch, and how far it is.
struct Item {
    std::string input;
    std::string output;
    bool isRunning = false;
    bool hasEnded = false;
    bool isSkipped = false;
    double part = 0.0;
    std::string said;  ///< the report, as it comes
    int status = 0;
    Json report = Json::object();

    std::string Result() const {
        if (isSkipped) return "is there already";
        if (report.contains("error")) return report["error"].value("message", "failed");
        const Json made = report.value("output", Json::object());
        const std::string shortfall =
            made.value("shortfall", Json()).is_string() ? made["shortfall"].get<std::string>() : std::string();
        return SizeText(Size()) + (shortfall.empty() ? "" : ", " + shortfall);
    }
    int64_t Size() const { return report.value("output", Json::object()).value("size", int64_t{0}); }
};

std::string NameOf(const std::string& path) { return std::filesystem::path(path).filename().string(); }

/// The files to make. Throws Failure (WrongUsage) where two would be the same.
std::vector<Item> Items(const Arguments& arguments, const std::string& extension) {
    std::vector<Item> items;
    std::map<std::string, std::string> makers;
    for (const std::string& input : arguments.inputs) {
        const std::string name = std::filesystem::path(input).stem().string() + "." + extension;
        const auto [maker, isNew] = makers.try_emplace(name, input);
        if (!isNew) {
            throw Failure(ExitStatus::WrongUsage, "Both " + Printable(maker->second) + " and " + Printable(input) +
                                                      " would become " + Printable(name) + ".");
        }
        Item& item = items.emplace_back();
        item.input = input;
        item.output = (std::filesystem::path(arguments.into) / name).string();
        struct stat source {};
        struct stat made {};
        item.isSkipped = stat(input.c_str(), &source) == 0 && stat(item.output.c_str(), &made) == 0 &&
                         (source.st_dev != made.st_dev || source.st_ino != made.st_ino) &&
                         std::pair(made.st_mtim.tv_sec, made.st_mtim.tv_nsec) >=
                             std::pair(source.st_mtim.tv_sec, source.st_mtim.tv_nsec);
        item.hasEnded = item.isSkipped;
    }
    return items;
}

void MakeFolder(const std::string& folder) {
    std::error_code reason;
    std::filesystem::create_directory(folder, reason);
    if (std::filesystem::is_directory(folder)) return;
    throw Failure(ExitStatus::WrongUsage, "Cannot write into " + Printable(folder) + ": " +
                                              (reason ? reason.message() : "it is no folder") + ".");
}

/// A command of this program for one item.
ChildJob JobOf(Item& item, const Arguments& arguments, const std::function<int(const Arguments&)>& perform) {
    Arguments one = arguments;
    one.into.clear();
    one.plan.input = item.input;
    one.output = item.output;
    one.json = true;
    one.tellsParts = true;
    ChildJob job;
    job.program = "datahelpers";
    job.run = [one, perform] {
        const int status = perform(one);
        std::cout.flush();
        std::fflush(stderr);
        return status;
    };
    job.onOutput = [&item](std::string_view line) { item.said.append(line) += '\n'; };
    job.onError = [&item](std::string_view line) {
        const std::string_view prefix = Progress::kPart;
        if (line.starts_with(prefix)) item.part = std::strtod(std::string(line.substr(prefix.size())).c_str(), nullptr);
    };
    job.onEnd = [&item](ChildEnd end) {
        item.isRunning = false;
        item.hasEnded = true;
        item.report = Json::parse(item.said, nullptr, false);
        item.status = end.exited ? end.status : static_cast<int>(ExitStatus::ConversionFailed);
        if (item.report.is_object() && end.exited) return;
        const std::string how = end.exited ? "it said nothing" : strsignal(end.status);
        item.report = {{"error", {{"message", "The conversion broke down: " + how + "."}}}};
    };
    return job;
}

void RunAll(std::vector<Item>& items, const Arguments& arguments, const std::function<int(const Arguments&)>& perform) {
    using Style = BatchProgress::Style;
    const bool onTerminal = isatty(STDERR_FILENO) != 0 && !arguments.isQuiet;
    const Style lines = arguments.json || arguments.isQuiet ? Style::None : Style::Lines;
    BatchProgress progress(onTerminal ? Style::Bars : lines, items.size());
    for (const Item& item : items) {
        if (item.isSkipped) progress.Ended(NameOf(item.input), item.Result());
    }
    std::cout.flush();  // or each child would write what waits there
    SignalGuard signals;
    Children children(signals, SIGTERM);
    auto next = items.begin();
    const auto start = [&] {
        for (; next != items.end() && children.Running() < arguments.jobs; ++next) {
            if (next->isSkipped) continue;
            next->isRunning = true;
            children.Start(JobOf(*next, arguments, perform));
        }
    };
    for (start(); children.Running() > 0; start()) {
        std::vector<Item*> running;
        std::vector<BatchProgress::Job> bars;
        for (Item& item : items) {
            if (!item.isRunning) continue;
            running.push_back(&item);
            bars.push_back({NameOf(item.input), item.part});
        }
        progress.Show(bars);
        children.Wait();
        for (const Item* item : running) {
            if (item->hasEnded) progress.Ended(NameOf(item->input), item->Result());
        }
    }
}

void PrintTable(std::ostream& out, const std::vector<Item>& items) {
    std::size_t longest = 0;
    for (const Item& item : items) longest = std::max(longest, Printable(item.output).size());
    std::size_t converted = 0;
    std::size_t skipped = 0;
    int64_t bytes = 0;
    for (const Item& item : items) {
        const std::string name = Printable(item.output);
        out << (item.status == 0 ? "  " : "! ") << name << std::string(longest - name.size() + 2, ' ')
            << Printable(item.Result()) << "\n";
        skipped += item.isSkipped ? 1 : 0;
        converted += !item.isSkipped && item.status == 0 ? 1 : 0;
        bytes += item.Size();
    }
    out << converted << " converted, " << skipped << " there already, " << items.size() - converted - skipped
        << " failed; " << SizeText(bytes) << "\n";
}

}  // namespace

Outcome ConvertMany(const Arguments& arguments, const std::function<int(const Arguments&)>& perform) {
    const Planner::Preset preset = ReadPreset(arguments.plan);
    std::vector<Planner::Problem> problems = Planner::Check(preset);
    if (!problems.empty()) throw Planner::NotAcceptable(std::move(problems));
    CheckConverter();
    std::vector<Item> items = Items(arguments, Planner::FileExtension(preset.Container()));
    MakeFolder(arguments.into);
    try {
        RunAll(items, arguments, perform);
    } catch (const Failure& failure) {
        if (static_cast<int>(failure.Status()) < 128) throw;
        const auto done = std::ranges::count_if(items, &Item::hasEnded);
        throw Failure(failure.Status(), "Interrupted: " + std::to_string(done) + " of " + std::to_string(items.size()) +
                                            " are done; the same command goes on with the rest.");
    }
    if (!arguments.json && !arguments.isQuiet) PrintTable(std::cout, items);
    Outcome outcome{.report = {{"files", Json::array()}}};
    for (const Item& item : items) {
        outcome.status = std::max(outcome.status, static_cast<ExitStatus>(item.status));
        if (arguments.isQuiet && item.status != 0) {
            std::cerr << "datahelpers: " << Printable(item.input) << ": " << Printable(item.Result()) << "\n";
        }
        Json entry{
            {"input", item.input}, {"output", item.output}, {"status", item.status}, {"skipped", item.isSkipped}};
        for (const char* member : {"error", "output"}) {
            if (item.report.contains(member))
                entry[std::strcmp(member, "output") == 0 ? "result" : member] = item.report[member];
        }
        outcome.report["files"].push_back(std::move(entry));
    }
    return outcome;
}

}  // namespace App
