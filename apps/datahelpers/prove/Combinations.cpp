#include "prove/Combinations.h"

#include <algorithm>
#include <iterator>
#include <set>

#include "Kestro/Conf/IFormatCodec.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Conf/StreamRecord.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/FFWrapper/SubtitleKinds.h"
#include "Kestro/Planner/Fits.h"

#include "prove/Offers.h"

namespace App {
namespace {

using Kestro::Conf::IFormatCodec;
using Kestro::Conf::IPreset;
using Kestro::Conf::StreamRecord;
using Kestro::Core::Property;

constexpr StreamType kTypes[] = {StreamType::Video, StreamType::Audio, StreamType::Subtitle};

/// The clip with what the container and the codecs need of it.
Footage ClipFor(const std::string& container, const std::map<StreamType, std::string>& codecs) {
    Footage clip{.hasCover = HasCoverOnly(container)};
    const auto subtitles = codecs.find(StreamType::Subtitle);
    if (subtitles != codecs.end() && !Kestro::FFWrapper::IsTextSubtitle(subtitles->second)) {
        clip.subtitles = subtitles->second;
    }
    return clip;
}

using Codecs = std::map<StreamType, std::string>;

void AddCodec(StreamType type, const std::vector<std::string>& offered, std::size_t number, Codecs& codecs) {
    if (!offered.empty()) codecs[type] = offered[number % offered.size()];
}

/// All pictures with all sounds, and each of both with all subtitles: in rows of their own, so that subtitles of which
/// there is no clip hide nothing.
std::vector<Codecs> Pairs(const std::string& container) {
    const std::vector<std::string> videos = Planner::OfferedCodecs(container, StreamType::Video);
    const std::vector<std::string> sounds = Planner::OfferedCodecs(container, StreamType::Audio);
    const std::vector<std::string> subtitles = Planner::OfferedCodecs(container, StreamType::Subtitle);
    std::vector<Codecs> pairs;
    const std::size_t count = std::max<std::size_t>(1, videos.size()) * std::max<std::size_t>(1, sounds.size());
    for (std::size_t i = 0; i < count && !(videos.empty() && sounds.empty()); ++i) {
        Codecs& pair = pairs.emplace_back();
        AddCodec(StreamType::Video, videos, i / std::max<std::size_t>(1, sounds.size()), pair);
        AddCodec(StreamType::Audio, sounds, i, pair);
    }
    for (std::size_t i = 0; i < std::max<std::size_t>({1, videos.size(), sounds.size()}); ++i) {
        for (std::size_t j = 0; j < subtitles.size(); ++j) {
            Codecs& pair = pairs.emplace_back();
            AddCodec(StreamType::Video, videos, i, pair);
            AddCodec(StreamType::Audio, sounds, i + j, pair);
            AddCodec(StreamType::Subtitle, subtitles, j, pair);
        }
    }
    return pairs;
}

void AddContainer(const std::string& container, std::vector<Combination>& rows) {
    rows.push_back({.about = "default", .container = container, .footage = ClipFor(container, {})});
    for (const auto& pair : Pairs(container)) {
        rows.push_back({.about = "pair", .container = container, .codecs = pair, .footage = ClipFor(container, pair)});
    }
}

/// The container's own settings: every value of a list, and what is either way.
void AddFormatSettings(const std::string& container, std::vector<Combination>& rows) {
    const auto add = [&](const std::string& path, const std::string& value, const char* about) {
        rows.push_back(
            {.about = about, .container = container, .settings = {{path, value}}, .footage = ClipFor(container, {})});
    };
    const Planner::HelperPtr helper = Planner::FindHelper(Planner::kFormats, container);
    const std::string own = IPreset::KEY_FORMAT + Property::SEPARATOR;
    for (const auto& [path, values] : ConstraintValues(*helper)) {
        const bool isStreams = path.starts_with(IPreset::KEY_STREAMS);
        if (path.ends_with(IFormatCodec::TAG_CODEC_ID)) continue;
        for (const std::string& value : values) add(isStreams ? path : own + path, value, "format");
    }
    for (const Property& setting : helper->GetDefaultSettings()) {
        // Whether there is a global header is the container's nature.
        if (setting.Type() != Kestro::PropertyTypes::Bool || setting.Name() == IFormatCodec::TAG_GLOBAL_HEADER)
            continue;
        add(own + setting.Name(), setting.GetBool() ? "false" : "true", "format");
    }
    for (const CodecRuleValues& rule : CodecRules(*helper)) {
        for (const std::string& codec : rule.codecs) {
            const std::vector<std::string> offered = Planner::OfferedCodecs(container, rule.type);
            if (std::ranges::find(offered, codec) == offered.end()) continue;
            for (const std::string& value : rule.filter.values) {
                const std::string stream = IPreset::KEY_STREAMS + IPreset::INDEX + StreamRecord::Find(rule.type).typeId;
                rows.push_back({.about = "format",
                                .container = container,
                                .codecs = {{rule.type, codec}},
                                .settings = {{stream + Property::SEPARATOR + rule.filter.path, value}},
                                .footage = ClipFor(container, {}),
                                .touches = {FilterOf(rule.filter.path)}});
            }
        }
    }
}

/// Every codec that the library says the container stores, from a file where it is alone.
void AddCopies(const std::string& container, std::vector<Combination>& rows) {
    const Property defaults = Planner::FindHelper(Planner::kFormats, container)->GetDefaultSettings();
    std::set<std::string> stored;
    for (const Planner::Fit& fit : Planner::FindFits({}, container)) {
        if (fit.fits) stored.insert(fit.codec);
    }
    for (const StreamType type : kTypes) {
        const bool hasStream = defaults.FindByPath(StreamRecord::Find(type).CodecIdPath()) != nullptr;
        if (!hasStream || (type == StreamType::Video && HasCoverOnly(container))) continue;
        for (const std::string& codec : KnownCodecs(type)) {
            if (!stored.contains(codec)) continue;
            rows.push_back({.about = "copy",
                            .container = container,
                            .codecs = {{type, codec}},
                            .isCopy = true,
                            .footage = {.codec = codec, .type = type}});
        }
    }
}

}  // namespace

std::vector<Combination> AllCombinations() {
    std::vector<Combination> rows;
    const std::vector<std::string> containers = Planner::HelperNames(Planner::kFormats);
    for (const std::string& container : containers) AddContainer(container, rows);
    for (const std::string& container : containers) AddFormatSettings(container, rows);
    std::ranges::move(SettingCombinations(), std::back_inserter(rows));
    for (const std::string& container : containers) AddCopies(container, rows);
    std::set<std::string> known;
    std::erase_if(rows, [&known](const Combination& row) { return !known.insert(row.Id()).second; });
    return rows;
}

std::vector<Combination> Sample(const std::vector<Combination>& all) {
    std::vector<Combination> sample;
    std::set<std::string> touched;
    const auto touch = [&touched](const Combination& row) {
        bool isNew = touched.insert("format=" + row.container).second;
        for (const auto& [type, codec] : row.codecs) {
            const char* what = row.isCopy ? "copy=" : KindName(type);
            isNew = touched.insert(what + codec).second || isNew;
        }
        for (const std::string& helper : row.touches) isNew = touched.insert(helper).second || isNew;
        return isNew;
    };
    std::ranges::copy_if(all, std::back_inserter(sample), touch);
    return sample;
}

}  // namespace App
