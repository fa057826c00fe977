#include "prove/ProveRun.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <map>
#include <set>

#include "Kestro/Planner/NotAcceptable.h"

#include "cli/Failure.h"
#include "convert/ChildProcess.h"
#include "convert/OutputFile.h"
#include "prove/Clips.h"
#include "prove/ProveProgress.h"
#include "prove/ProveRow.h"

namespace App {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kNoEncoder = static_cast<int>(ExitStatus::NotAcceptable);

/// What a process of its own does; it ends by an alarm where it takes too long, and takes its ffmpeg along.
ChildJob Job(unsigned timeout, std::function<void()> work, std::function<void(std::string_view)> onLine,
             std::function<void(ChildEnd)> onEnd) {
    ChildJob job;
    job.program = "datahelpers";
    job.run = [timeout, work = std::move(work)] {
        alarm(timeout);
        try {
            work();
        } catch (const Failure& failure) {
            if (static_cast<int>(failure.Status()) >= 128) return static_cast<int>(failure.Status());
            std::cout << failure.Said().message << "\n";
        } catch (const Planner::NotAcceptable& refused) {
            std::cout << refused.what() << std::endl;
            return kNoEncoder;
        } catch (const std::exception& exception) {
            std::cout << exception.what() << "\n";
        }
        std::cout.flush();
        return 0;
    };
    job.onOutput = std::move(onLine);
    job.onError = [](std::string_view) {};
    job.onEnd = std::move(onEnd);
    return job;
}

/// Whether the child ended because its time was up.
bool IsLate(const ChildEnd& end) { return end.exited ? end.status == 128 + SIGALRM : end.status == SIGALRM; }

std::string HowEnded(const ChildEnd& end, unsigned timeout) {
    if (IsLate(end)) return "it takes longer than " + std::to_string(timeout) + " s";
    return end.exited ? "it ended with status " + std::to_string(end.status)
                      : std::string("it broke down: ") + strsignal(end.status);
}

class Run {
public:
    Run(const std::vector<Combination>& combinations, const ProveOptions& options, bool isQuiet,
        const std::function<void(const Proof&)>& onDone)
        : combinations_(combinations),
          options_(options),
          onDone_(onDone),
          clips_(folder_.Path()),
          progress_(isQuiet ? ProveProgress::Style::None : ProveProgress::StyleOf(STDERR_FILENO), combinations.size()) {
    }

    void Do() {
        clips_.MakeFirst();
        std::cout.flush();  // or each child would write what waits there
        SignalGuard signals;
        Children children(signals, SIGTERM);
        std::map<std::string, const Footage*> footage;
        for (const Combination& one : combinations_) {
            if (!one.container.empty()) footage.emplace(one.footage.Name(), &one.footage);
        }
        footage.erase(Footage{}.Name());
        for (const auto& [name, needed] : footage) {
            WaitForPlace(children);
            children.Start(FootageJob(name, *needed));
        }
        while (children.Running() > 0) children.Wait();
        for (std::size_t i = 0; i < combinations_.size(); ++i) {
            WaitForPlace(children);
            children.Start(RowJob(i));
        }
        while (children.Running() > 0) children.Wait();
    }

private:
    void WaitForPlace(Children& children) const {
        while (children.Running() >= options_.jobs) children.Wait();
    }

    ChildJob FootageJob(const std::string& name, const Footage& needed) {
        return Job(
            options_.timeout, [this, &needed] { clips_.Make(needed); },
            [this, name](std::string_view line) { missing_[name].why += line; },
            [this, name, &needed](ChildEnd end) {
                Missing& missing = missing_[name];
                missing.isNoEncoder = end.exited && end.status == kNoEncoder;
                if (!missing.isNoEncoder && (!end.exited || end.status != 0))
                    missing.why = HowEnded(end, options_.timeout);
                if (clips_.Find(needed).empty() && missing.why.empty()) missing.why = "no clip of it was made";
            });
    }

    ChildJob RowJob(std::size_t number) {
        const Combination& combination = combinations_[number];
        const std::string folder = folder_.Path() + "/" + std::to_string(number);
        const auto missing = missing_.find(combination.footage.Name());
        const Missing why = missing == missing_.end() ? Missing() : missing->second;
        const auto begun = Clock::now();
        return Job(
            options_.timeout,
            [this, &combination, folder, why] {
                std::filesystem::create_directory(folder);
                std::cout << ToJson(Prove(combination, clips_, why, folder))
                                 .dump(-1, ' ', false, Json::error_handler_t::replace)
                          << "\n";
            },
            [this, number](std::string_view line) { said_[number] += line; },
            [this, number, folder, begun](ChildEnd end) {
                std::error_code none;
                std::filesystem::remove_all(folder, none);
                Proof proof = ProofOf(combinations_[number]);
                const std::optional<Proof> told = ProofFromJson(Json::parse(said_[number], nullptr, false));
                const bool ended = end.exited && end.status == 0;
                if (ended && told) proof = *told;
                if (!ended || !told) proof.why = ended ? said_[number] : HowEnded(end, options_.timeout);
                said_.erase(number);
                proof.seconds = std::round(100.0 * std::chrono::duration<double>(Clock::now() - begun).count()) / 100.0;
                onDone_(proof);
                progress_.Done(proof);
            });
    }

    const std::vector<Combination>& combinations_;
    const ProveOptions& options_;
    const std::function<void(const Proof&)>& onDone_;
    TemporaryDirectory folder_;
    Clips clips_;
    ProveProgress progress_;
    std::map<std::string, Missing> missing_;  ///< by the footage's name
    std::map<std::size_t, std::string> said_;
};

}  // namespace

void ProveAll(const std::vector<Combination>& combinations, const ProveOptions& options, bool isQuiet,
              const std::function<void(const Proof&)>& onDone) {
    if (combinations.empty()) return;
    Run(combinations, options, isQuiet, onDone).Do();
}

}  // namespace App
