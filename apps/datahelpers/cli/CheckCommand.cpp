#include "cli/CheckCommand.h"

#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <utility>

#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/Planner/MakePlan.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Probe.h"

#include "cli/PresetFile.h"
#include "report/Report.h"
#include "report/Text.h"

namespace App {
namespace {

using Kestro::Conf::StreamType;
using Planner::Change;
using Planner::MediaInfo;
using Planner::Preset;
using Planner::Problem;

/// What most presets are made for; no container takes its streams as they are.
MediaInfo UsualFilm() {
    Planner::MediaStream video{.index = 0, .type = StreamType::Video, .codec = "ffv1"};
    video.width = 1920;
    video.height = 1080;
    video.fps = 25;
    video.bitDepth = 8;
    Planner::MediaStream audio{.index = 1, .type = StreamType::Audio, .codec = "pcm_f32be"};
    audio.sampleRate = 48'000;
    audio.layout = "stereo";
    audio.sampleFormat = "flt";
    return {.path = "film", .demuxer = "matroska,webm", .duration = 5400.0, .streams = {video, audio}};
}

/// Whether a user could set all of it as it stands.
bool CanBeSet(const std::vector<Change>& changes) {
    return !changes.empty() && std::ranges::none_of(changes, [](const Change& change) {
        return change.value == "VALUE" || change.value == "NAME";
    });
}

/// What a plan refuses or corrects: a refused setting is changed as it is suggested, so that the next one shows.
void AddPlanned(const MediaInfo& input, Preset preset, std::vector<Problem>& problems) {
    constexpr int kMost = 50;
    for (int i = 0; i < kMost; ++i) {
        try {
            const std::vector<Problem> corrected = CorrectionsAsProblems(Planner::MakePlan(input, preset));
            problems.insert(problems.end(), corrected.begin(), corrected.end());
            return;
        } catch (const Planner::NotAcceptable& refused) {
            bool isChanged = false;
            for (const Problem& problem : refused.Problems()) {
                const bool isKnown = std::ranges::find(problems, problem.message, &Problem::message) != problems.end();
                if (isKnown) continue;  // what was suggested did not help
                problems.push_back(problem);
                if (!CanBeSet(problem.changes)) continue;
                isChanged = true;
                for (const Change& change : problem.changes) preset.Set(change.path, change.value);
            }
            if (!isChanged) return;
        }
    }
}

}  // namespace

std::vector<Problem> CorrectionsAsProblems(const Planner::Plan& plan) {
    const auto text = [](const std::optional<Kestro::Core::Property>& value) {
        return value ? Kestro::Core::PropertyValueToString(*value) : std::string("none");
    };
    std::vector<Problem> problems;
    for (const Planner::Correction& correction : plan.corrections) {
        problems.push_back({.code = Planner::ProblemCode::ValueCorrected,
                            .message = correction.path + " = " + text(correction.before) + " would become " +
                                       text(correction.after) + ".",
                            .path = correction.path,
                            .value = text(correction.before),
                            .cause = correction.reason});
        if (correction.after) problems.back().changes = {{correction.path, text(correction.after)}};
    }
    return problems;
}

Outcome CheckPreset(const Arguments& arguments) {
    std::vector<Problem> problems;
    try {
        const Preset preset = ReadPreset(arguments.plan);
        problems = Planner::Check(preset);
        if (problems.empty()) {
            const std::string& input = arguments.plan.input;
            AddPlanned(input.empty() ? UsualFilm() : Planner::Probe(input), preset, problems);
        }
    } catch (const Planner::NotAcceptable& refused) {
        if (refused.Problems().front().code == Planner::ProblemCode::UnreadableInput) throw;
        problems = refused.Problems();
    }
    Json list = Json::array();
    for (const Problem& problem : problems) {
        list.push_back(ToJson(Told(problem)));
        list.back()["code"] = Planner::ProblemText(problem.code);
        if (!problem.cause.empty()) list.back()["cause"] = problem.cause;
        if (!arguments.json) Print(std::cout, Told(problem), TerminalWidth(STDOUT_FILENO));
    }
    if (!arguments.json && problems.empty()) std::cout << "Nothing is wrong with it.\n";
    return {{{"problems", list}}, problems.empty() ? ExitStatus::Done : ExitStatus::NotAcceptable};
}

}  // namespace App
