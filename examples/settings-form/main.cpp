/// A settings form in a terminal: every setting with what it may be, what one value does to the others, and the plan
/// that comes of it. Reads a line at a time: `PATH=VALUE` changes a setting, an empty line ends.
///
///     settings-form CONTAINER [PRESET.json]

#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Conf/StreamRecord.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/Planner/Domain.h"
#include "Kestro/Planner/Helpers.h"
#include "Kestro/Planner/MakePlan.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/RuleTree.h"
#include "Kestro/Proc/FindSetting.h"

namespace {

using Kestro::Conf::IDataHelper;
using Kestro::Conf::StreamType;
using Kestro::Core::Property;
using Kestro::Core::PropertyValueToString;
namespace Planner = Kestro::Planner;

/// What the form is filled in for; an application probes a file (Planner::Probe).
Planner::MediaInfo Source() {
    Planner::MediaStream video{.index = 0, .type = StreamType::Video, .codec = "prores", .width = 1920, .height = 1080};
    video.fps = {24000, 1001};
    Planner::MediaStream audio{.index = 1, .type = StreamType::Audio, .codec = "pcm_s24le"};
    audio.sampleRate = 96000;
    audio.layout = "5.1";
    audio.sampleFormat = "fltp";
    return {.path = "film.mkv", .demuxer = "matroska,webm", .duration = 5400.0, .streams = {video, audio}};
}

/// A constraint's key is a path below the helper's own node, or from the stream's root where it is a filter's.
const Property* FindSetting(const Property& tree, const std::string& node, const std::string& key) {
    const Property* own = tree.FindByPath(node + Property::SEPARATOR + key);
    return own != nullptr ? own : tree.FindByPath(key);
}

/// Every constrained setting of a helper: its value, and the choices or bounds that a widget would offer.
void ShowSettings(const IDataHelper& helper, const std::string& node, const Property& tree) {
    Kestro::Conf::ConstraintMap constraints;
    helper.FillConstraints(constraints);
    for (const auto& [key, constraint] : constraints) {
        const Property* value = FindSetting(tree, node, key);
        if (value == nullptr || value->Count() > 0) continue;
        const Planner::Domain domain = Planner::DescribeDomain(*constraint);
        const char* widget = domain.isList ? "choice" : domain.min ? "slider" : "field ";
        const Kestro::Conf::SettingRecord* record = Kestro::Proc::FindSetting(key);
        std::cout << "  [" << widget << "] " << (record != nullptr ? record->Label() : key) << ": "
                  << PropertyValueToString(*value) << (record != nullptr ? " " + record->Unit() : "") << "   of "
                  << Planner::ListInWords(Planner::AllowedValues(domain)) << "\n";
    }
}

/// The rules whose condition is true now: what other settings may be while it is.
void ShowActiveRules(const IDataHelper& helper, const Property& tree) {
    Kestro::Conf::ValidationRuleList rules;
    helper.FillValidationRules(rules);
    for (const auto& [name, rule] : rules) {
        const Property* first = tree.FindByPath(rule->GetFirstName());
        const Property* second = tree.FindByPath(rule->GetSecondName());
        if (first == nullptr || second == nullptr || !rule->GetFirstConstraint()->IsValid(*first)) continue;
        std::cout << "  (" << (rule->Validate(tree) ? "kept" : "broken") << ") " << Planner::InWords(*rule) << "\n";
    }
}

void ShowForm(const Planner::Plan& plan) {
    const auto format = Planner::FindHelper(Planner::kFormats, plan.container);
    for (std::size_t i = 0; i < plan.streams.size(); ++i) {
        const Planner::PlannedStream& stream = plan.streams[i];
        const auto encoder = Planner::FindHelper(Planner::CodecsOf(stream.kind->type), stream.codecId);
        const Property tree = Planner::RuleTree(plan.FormatSettings(), plan.StreamSettings(i));
        std::cout << "\n" << stream.kind->typeId << " " << stream.codecId << "\n";
        ShowSettings(*encoder, stream.kind->codecKey, tree);
        ShowActiveRules(*encoder, tree);
        ShowActiveRules(*format, tree);
    }
    for (const Planner::Choice& choice : plan.choices) {
        std::cout << "  chosen: " << choice.path << " = " << choice.value << ", " << choice.reason << "\n";
    }
    for (const Planner::Correction& correction : plan.corrections) {
        std::cout << "  corrected: " << correction.path << " -> "
                  << (correction.after ? PropertyValueToString(*correction.after) : "none") << ", " << correction.reason
                  << "\n";
    }
}

/// What differs between two plans of the same streams: the effect of one change on all the others.
void ShowEffects(const Property& before, const Property& after, const std::string& path) {
    for (const Property& now : after) {
        const std::string here = path + (path.empty() ? "" : "/") + now.Name();
        const Property* was = before.FindByPath(now.Name());
        if (now.Count() > 0) {
            ShowEffects(was != nullptr ? *was : Property(), now, here);
        } else if (was == nullptr || !(*was == now)) {
            std::cout << "  changed: " << here << ": " << (was != nullptr ? PropertyValueToString(*was) : "none")
                      << " -> " << PropertyValueToString(now) << "\n";
        }
    }
}

void ShowProblems(const Planner::NotAcceptable& refused) {
    for (const Planner::Problem& problem : refused.Problems()) {
        std::cout << "  refused (" << Planner::ProblemText(problem.code) << "): " << problem.message << "\n";
        for (const Planner::Change& change : problem.changes) {
            std::cout << "    try " << change.path << "=" << change.value << "\n";
        }
    }
}

Planner::Preset ReadPreset(int count, char** values) {
    if (count < 3) return Planner::Preset::OfContainer(values[1]);
    std::ostringstream text;
    text << std::ifstream(values[2]).rdbuf();
    return Planner::Preset::FromJson(text.str(), values[2]);
}

int Run(int count, char** values) {
    Planner::Preset preset = ReadPreset(count, values);
    Planner::Plan plan = Planner::MakePlan(Source(), preset);
    ShowForm(plan);
    for (std::string line; std::getline(std::cin, line) && !line.empty();) {
        std::cout << "\n> " << line << "\n";
        const std::size_t equals = line.rfind('=');
        if (equals == std::string::npos) continue;
        Planner::Preset changed = preset;
        changed.Set(line.substr(0, equals), line.substr(equals + 1));
        try {
            Planner::Plan next = Planner::MakePlan(Source(), changed);
            ShowEffects(plan.settings, next.settings, {});
            preset = std::move(changed);
            plan = std::move(next);
        } catch (const Planner::NotAcceptable& refused) {
            ShowProblems(refused);  // the form stays as it was
        }
    }
    ShowForm(plan);
    return 0;
}

}  // namespace

int main(int count, char** values) {
    if (count < 2) {
        std::cerr << "settings-form CONTAINER [PRESET.json]\n";
        return 2;
    }
    try {
        return Run(count, values);
    } catch (const Planner::NotAcceptable& refused) {
        ShowProblems(refused);
        return 3;
    }
}
