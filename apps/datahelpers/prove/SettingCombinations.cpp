#include <algorithm>
#include <iterator>
#include <set>

#include "Kestro/Conf/IFormatCodec.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Conf/StreamRecord.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/Planner/Automatic.h"
#include "Kestro/Proc/FilterRecord.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/Proc/IResize.h"

#include "prove/Combinations.h"
#include "prove/Offers.h"

namespace App {
namespace {

using Kestro::Conf::IFormatCodec;
using Kestro::Conf::IFormatCodecVideo;
using Kestro::Conf::IPreset;
using Kestro::Conf::StreamRecord;
using Kestro::Core::Property;
using Kestro::Proc::FilterRecord;
using Kestro::Proc::IResize;
using Planner::Change;

const std::string& Separator() { return Property::SEPARATOR; }

/// The path of a setting of a stream from the preset's root.
std::string OfStream(StreamType type, const std::string& below) {
    return IPreset::KEY_STREAMS + IPreset::INDEX + StreamRecord::Find(type).typeId + Separator() + below;
}

const char* AboutOf(const std::string& path) {
    if (path.ends_with(IFormatCodec::TAG_BITRATE_MODE)) return "mode";
    return path.ends_with(IFormatCodec::TAG_PROFILE) ? "profile" : "value";
}

std::string OfResizer(const std::string& tag) {
    return OfStream(StreamType::Video,
                    Kestro::Proc::IFilterResize::CLASS_ID + Separator() + IResize::CLASS_ID + Separator() + tag);
}

/// The setting, and where its value alone would mean nothing what gives it a meaning.
std::vector<Change> Meant(const std::string& path, const std::string& value) {
    const auto frame = [](const std::string& mode, const std::string& width, const std::string& height) {
        return std::vector<Change>{{OfResizer(IResize::FRAME_SIZE_MODE), mode},
                                   {OfResizer(IFormatCodecVideo::TAG_WIDTH), width},
                                   {OfResizer(IFormatCodecVideo::TAG_HEIGHT), height}};
    };
    const std::size_t times = value.find('x');
    const bool isMode = path == OfResizer(IResize::FRAME_SIZE_MODE);
    if (isMode && times != std::string::npos) {
        return frame(IResize::FRAME_SIZE_CUSTOM, value.substr(0, times), value.substr(times + 1));
    }
    // Another shape than the clip's.
    if (isMode && (value == IResize::FRAME_SIZE_CUSTOM || value == IResize::FRAME_SIZE_CUSTOM_SCALE)) {
        return frame(value, "128", "128");
    }
    std::vector<Change> settings{{path, value}};
    if (path == OfResizer(IResize::MODE) || path == OfResizer(IResize::METHOD)) {
        std::ranges::copy(frame(IResize::FRAME_SIZE_CUSTOM, "128", "128"), std::back_inserter(settings));
    }
    return settings;
}

/// The rows of one encoder, all in the first container that takes it.
class EncoderRows {
public:
    EncoderRows(StreamType type, const std::string& codec, std::vector<Combination>& rows)
        : type_(type), codec_(codec), kind_(Planner::CodecsOf(type)), rows_(rows) {}

    void Add() {
        const std::vector<std::string> carriers = Carriers(type_, codec_);
        if (carriers.empty()) {
            rows_.push_back({.about = "default", .container = {}, .codecs = {{type_, codec_}}});
            return;
        }
        container_ = carriers.front();
        const Planner::HelperPtr helper = Planner::FindHelper(kind_, codec_);
        const std::vector<OfferedValues> own = ConstraintValues(*helper);
        hasQuality_ =
            std::ranges::any_of(own, [](const auto& offered) { return offered.path == IFormatCodec::TAG_QUALITY; });
        for (const auto& [path, values] : own) AddValues(BelowStream(path), values);
        for (const CodecRuleValues& rule : CodecRules(*helper)) AddValues(rule.filter.path, rule.filter.values);
        AddAutomatic();
    }

private:
    std::string BelowStream(const std::string& path) const {
        return FilterOf(path).empty() ? StreamRecord::Find(type_).codecKey + Separator() + path : path;
    }

    void AddValues(const std::string& path, const std::vector<std::string>& values) {
        for (const std::string& value : values) {
            std::vector<Change> settings = Meant(OfStream(type_, path), value);
            // A variable bitrate is said by its quality, where the encoder has one.
            if (value == IFormatCodec::TAG_BITRATE_MODE_VBR && hasQuality_) {
                settings.push_back({OfStream(type_, BelowStream(IFormatCodec::TAG_QUALITY)),
                                    std::to_string(IFormatCodec::MAX_QUALITY / 2)});
            }
            AddRow(AboutOf(path), std::move(settings));
        }
    }

    /// Everything that the encoder lets the program choose, at once.
    void AddAutomatic() {
        const Planner::HelperPtr helper = Planner::FindAutomaticHelper(kind_, codec_);
        std::set<std::string> paths;
        for (const OfferedValues& offered : ConstraintValues(*helper)) paths.insert(BelowStream(offered.path));
        for (const CodecRuleValues& rule : CodecRules(*helper)) paths.insert(rule.filter.path);
        std::vector<Change> settings;
        for (const std::string& path : paths) {
            if (Planner::FindAutomaticSetting(path) == nullptr) continue;
            settings.push_back({OfStream(type_, path), IFormatCodec::CODEC_ID_AUTO});
        }
        if (!settings.empty()) AddRow("automatic", std::move(settings));
    }

    void AddRow(const char* about, std::vector<Change> settings) {
        Combination& row = rows_.emplace_back();
        row.about = about;
        row.container = container_;
        row.codecs = {{type_, codec_}};
        row.footage.hasCover = HasCoverOnly(container_);
        for (const Change& setting : settings) {
            const std::string below = setting.path.substr(OfStream(type_, {}).size());
            if (!FilterOf(below).empty()) row.touches.push_back(FilterOf(below));
        }
        row.settings = std::move(settings);
    }

    StreamType type_;
    std::string codec_;
    const Planner::HelperKind& kind_;
    std::vector<Combination>& rows_;
    std::string container_;
    bool hasQuality_ = false;
};

/// The settings of a filter's helper with their defaults, below the filter's node.
void CollectDefaults(const Property& node, const std::string& path,
                     std::vector<std::pair<std::string, std::string>>& all) {
    for (const Property& child : node) {
        const std::string below = path.empty() ? child.Name() : path + Separator() + child.Name();
        if (child.Type() == Kestro::PropertyTypes::Node) {
            CollectDefaults(child, below, all);
        } else if (child.Name() != IPreset::KEY_TYPE_ID) {
            all.emplace_back(below, Kestro::Core::PropertyValueToString(child));
        }
    }
}

void AddFilter(const FilterRecord& filter, std::vector<Combination>& rows) {
    const Planner::HelperPtr helper = Planner::FindHelper(Planner::kFilters, filter.classId);
    std::vector<OfferedValues> offered = ConstraintValues(*helper);
    std::vector<std::pair<std::string, std::string>> defaults;
    CollectDefaults(helper->GetDefaultSettings(), {}, defaults);
    for (const auto& [path, value] : defaults) {
        const auto isThis = [&name = path](const OfferedValues& one) { return one.path == name; };
        if (std::ranges::none_of(offered, isThis)) offered.push_back({path, {value}});
    }
    for (const auto& [path, values] : offered) {
        const std::string whole = OfStream(filter.type, filter.classId + Separator() + path);
        for (const std::string& value : values) {
            rows.push_back({.about = "filter",
                            .container = RoomiestContainer(),
                            .settings = Meant(whole, value),
                            .touches = {filter.classId}});
        }
    }
}

}  // namespace

std::vector<Combination> SettingCombinations() {
    std::vector<Combination> rows;
    for (const StreamRecord& kind : StreamRecord::WithHelpers()) {
        for (const std::string& codec : Planner::HelperNames(Planner::CodecsOf(kind.type))) {
            // Left to the program, it is the container's: that is each container's default row.
            if (codec != IFormatCodec::CODEC_ID_AUTO) EncoderRows(kind.type, codec, rows).Add();
        }
    }
    for (const FilterRecord& filter : FilterRecord::All()) AddFilter(filter, rows);
    return rows;
}

}  // namespace App
