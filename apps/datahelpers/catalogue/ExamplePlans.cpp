#include "catalogue/ExamplePlans.h"

#include <map>
#include <sstream>

#include "Kestro/Conf/IPreset.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/Planner/FfmpegCommands.h"
#include "Kestro/Planner/FileNames.h"
#include "Kestro/Planner/MakePlan.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Proc/FindSetting.h"

#include "report/Report.h"
#include "report/Text.h"

namespace App::Catalogue {
namespace {

using Kestro::Conf::IPreset;
using Kestro::Conf::StreamType;
using Kestro::Core::Property;
using Kestro::Core::PropertyValueToString;
using Planner::MediaInfo;
using Planner::MediaStream;
using Planner::Plan;
using Planner::PlannedStream;

/// A master from the cutting room: few containers take any of it as it is, so that plans have something to tell.
MediaInfo Film() {
    MediaStream video{.index = 0, .type = StreamType::Video, .codec = "ffv1"};
    video.width = 1998;
    video.height = 1080;
    video.fps = 24;
    video.bitDepth = 10;
    MediaStream audio{.index = 1, .type = StreamType::Audio, .codec = "pcm_f32le"};
    audio.sampleRate = 96'000;
    audio.layout = "5.1";
    audio.sampleFormat = "flt";
    audio.language = "eng";
    MediaStream subtitles{.index = 2, .type = StreamType::Subtitle, .codec = "subrip"};
    subtitles.language = "fre";
    return {.path = "feature.mkv",
            .demuxer = "matroska,webm",
            .duration = 5400.0,
            .chapters = 12,
            .streams = {video, audio, subtitles}};
}

/// Values that are alike are kept once.
class Items {
public:
    Json Add(const Json& item) {
        const auto [found, isNew] = numbers_.try_emplace(item.dump(), items_.size());
        if (isNew) items_.push_back(item);
        return found->second;
    }
    const Json& All() const { return items_; }

private:
    std::map<std::string, std::size_t> numbers_;
    Json items_ = Json::array();
};

/// Makes the plans, and remembers the settings that are in them.
class Examples {
public:
    explicit Examples(const Knowledge& knowledge) : knowledge_(knowledge), film_(Film()) {}

    Json Make() {
        std::ostringstream input;
        Print(input, film_);
        Json lines = Json::array();
        std::istringstream text(input.str());
        for (std::string line; std::getline(text, line);) lines.push_back(line.substr(line.find_first_not_of(' ')));
        Json containers = Json::object();
        for (const Container& container : knowledge_.containers) containers[container.name] = PlansOf(container);
        return {{"input", lines},
                {"labels", labels_},
                {"containers", containers},
                {"plans", plans_},
                {"items", items_.All()}};
    }

private:
    std::vector<std::string> Offered(const Container& container, StreamType type) const {
        std::vector<std::string> offered;
        for (std::size_t i = 0; i < knowledge_.codecs.size(); ++i) {
            if (knowledge_.codecs[i].kind->type != type || !IsOffered(container.cells[i].standing)) continue;
            const bool isDefault = container.cells[i].standing == Standing::Default;
            offered.insert(isDefault ? offered.begin() : offered.end(), knowledge_.codecs[i].id);
        }
        if (offered.empty()) offered.emplace_back();
        return offered;
    }

    Json PlansOf(const Container& container) {
        const std::vector<std::string> video = Offered(container, StreamType::Video);
        const std::vector<std::string> audio = Offered(container, StreamType::Audio);
        Json plans = Json::array();
        for (const std::string& one : video) {
            for (const std::string& other : audio) {
                plans.push_back(plans_.size());
                plans_.push_back(PlanFor(container, one, other));
            }
        }
        return {{"video", video}, {"audio", audio}, {"plans", plans}};
    }

    Json PlanFor(const Container& container, const std::string& video, const std::string& audio) {
        Planner::Preset preset = Planner::Preset::OfContainer(container.name);
        const std::string output = "output." + container.extension;
        std::vector<std::string> convert = {"datahelpers", "convert", film_.path, output};
        if (Planner::ContainerOfFileName(output) != container.name) {
            convert.insert(convert.end(), {"--format", container.name});
        }
        if (!video.empty()) {
            preset.Choose(StreamType::Video, video, "you");
            convert.insert(convert.end(), {"--video", video});
        }
        if (!audio.empty()) {
            preset.Choose(StreamType::Audio, audio, "you");
            convert.insert(convert.end(), {"--audio", audio});
        }
        try {
            const Plan plan = Planner::MakePlan(film_, preset);
            Json json = ToItems(plan);
            json["convert"] = ShellLine(convert);
            json["commands"] = Commands(plan, output);
            return json;
        } catch (const Planner::NotAcceptable& refused) {
            const Planner::Problem& problem = refused.Problems().front();
            return {{"refused", {problem.message, problem.cause, problem.wayOut}}};
        }
    }

    static Json Commands(const Plan& plan, const std::string& output) {
        const Planner::CommandOptions options{.workFolder = ".", .isWatched = false};
        Json lines = Json::array();
        for (const Planner::Command& command : Planner::FfmpegCommands(plan, output, options)) {
            lines.push_back("ffmpeg " + ShellLine(command));
        }
        return lines;
    }

    Json ToItems(const Plan& plan) {
        const auto text = [](const std::optional<Property>& value) {
            return value ? Json(PropertyValueToString(*value)) : Json();
        };
        Json streams = Json::array();
        for (std::size_t i = 0; i < plan.streams.size(); ++i) {
            const PlannedStream& stream = plan.streams[i];
            Json settings = Json::array();
            AddSettings(plan.StreamSettings(i), {}, settings);
            streams.push_back(items_.Add({{"kind", stream.kind->typeId},
                                          {"codec", stream.codecId},
                                          {"from", stream.source.index},
                                          {"encoder", stream.encoder},
                                          {"copied", stream.isCopied},
                                          {"path", stream.path},
                                          {"settings", settings}}));
        }
        Json choices = Json::array();
        for (const Planner::Choice& choice : plan.choices) {
            choices.push_back(items_.Add({choice.path, choice.value, choice.reason}));
        }
        Json corrections = Json::array();
        for (const Planner::Correction& correction : plan.corrections) {
            corrections.push_back(
                items_.Add({correction.path, text(correction.before), text(correction.after), correction.reason}));
        }
        Json notes = Json::array();
        for (const std::string& note : plan.notes) notes.push_back(items_.Add(note));
        return {{"streams", streams}, {"choices", choices}, {"corrections", corrections}, {"notes", notes}};
    }

    /// Every value below the node, as [path, value].
    void AddSettings(const Property& node, const std::string& path, Json& settings) {
        for (const Property& child : node) {
            const std::string childPath = path.empty() ? child.Name() : path + Property::SEPARATOR + child.Name();
            if (child.Count() > 0) {
                AddSettings(child, childPath, settings);
            } else if (!child.IsEmpty() && child.Name() != IPreset::KEY_TYPE_ID) {
                settings.push_back(items_.Add({childPath, PropertyValueToString(child)}));
                const Kestro::Conf::SettingRecord* setting = Kestro::Proc::FindSetting(childPath);
                if (setting != nullptr) labels_[child.Name()] = {setting->label, setting->unit};
            }
        }
    }

    const Knowledge& knowledge_;
    MediaInfo film_;
    Items items_;
    Json labels_ = Json::object();
    Json plans_ = Json::array();
};

}  // namespace

Json ExamplePlans(const Knowledge& knowledge) { return Examples(knowledge).Make(); }

}  // namespace App::Catalogue
