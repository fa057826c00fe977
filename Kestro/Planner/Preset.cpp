#include "Kestro/Planner/Preset.h"

#include <algorithm>
#include <utility>

#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Planner/CheckedPreset.h"
#include "Kestro/Planner/JsonTree.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Tree.h"

namespace Kestro::Planner {

Preset Preset::FromJson(const std::string& text, const std::string& name) {
    Preset preset;
    preset.isFromText_ = true;
    preset.settings_ = ParseJsonTree(text, name);
    return preset;
}

Preset Preset::OfContainer(const std::string& container) {
    Preset preset;
    preset.settings_.SetChild(Conf::IPreset::KEY_FORMAT).SetChild(Conf::IFormatFile::TAG_CONTAINER, container);
    return preset;
}

Preset& Preset::Choose(Conf::StreamType type, std::string codec, std::string by) {
    std::erase_if(choices_, [type](const Choice& choice) { return choice.type == type; });
    choices_.push_back({type, std::move(codec), std::move(by)});
    return *this;
}

Preset& Preset::ChooseTracks(Conf::StreamType type, std::string tracks) {
    tracks_[type] = std::move(tracks);
    return *this;
}

Preset& Preset::Set(std::string path, std::string value) {
    changes_.push_back({std::move(path), std::move(value)});
    return *this;
}

Preset& Preset::LimitSize(int64_t bytes) { return Set(KEY_SIZE, std::to_string(bytes)); }

std::string Preset::Container() const {
    const std::string path = Below(Conf::IPreset::KEY_FORMAT, Conf::IFormatFile::TAG_CONTAINER);
    std::string container = TextAt(settings_, path);
    for (const Change& change : changes_) {
        if (change.path == path) container = change.value;
    }
    return container;
}

const Preset::Choice* Preset::Chosen(Conf::StreamType type) const {
    const auto found = std::ranges::find(choices_, type, &Choice::type);
    return found != choices_.end() ? &*found : nullptr;
}

std::vector<Problem> Check(const Preset& preset) {
    try {
        Checked(preset);
    } catch (const NotAcceptable& refused) {
        return refused.Problems();
    }
    return {};
}

}  // namespace Kestro::Planner
