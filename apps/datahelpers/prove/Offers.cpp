#include "prove/Offers.h"

#include <algorithm>

#include "Kestro/Conf/CodecKinds.h"
#include "Kestro/Conf/IFormatCodec.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Conf/StreamRecord.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/Proc/FilterRecord.h"

namespace App {
namespace {

using Kestro::Conf::IDataHelper;
using Kestro::Conf::IFormatCodecVideo;
using Kestro::Conf::StreamRecord;
using Kestro::Core::Property;
using Kestro::Core::PropertyValueToString;

std::size_t Roominess(const std::string& container) {
    std::size_t codecs = 0;
    for (const StreamRecord& kind : StreamRecord::All()) codecs += Planner::OfferedCodecs(container, kind.type).size();
    return codecs;
}

/// The containers, those that offer most codecs first.
std::vector<std::string> RoomiestFirst() {
    std::vector<std::string> containers = Planner::HelperNames(Planner::kFormats);
    std::ranges::stable_sort(
        containers, [](const std::string& one, const std::string& other) { return Roominess(one) > Roominess(other); });
    return containers;
}

}  // namespace

std::vector<std::string> KnownCodecs(StreamType type) {
    const auto ids = type == StreamType::Video   ? Kestro::Conf::VideoCodecIds()
                     : type == StreamType::Audio ? Kestro::Conf::AudioCodecIds()
                                                 : Kestro::Conf::SubtitleCodecIds();
    return {ids.begin(), ids.end()};
}

bool HasCoverOnly(const std::string& container) {
    const Property defaults = Planner::FindHelper(Planner::kFormats, container)->GetDefaultSettings();
    const StreamRecord& video = StreamRecord::Find(StreamType::Video);
    const std::string codec = Kestro::Conf::IPreset::KEY_STREAMS + Kestro::Conf::IPreset::INDEX + video.typeId +
                              Property::SEPARATOR + video.codecKey;
    const Property* cover =
        defaults.FindByPath(codec + Property::SEPARATOR + Kestro::Conf::IFormatCodecVideo::TAG_COVER_FLAG);
    return cover != nullptr && cover->GetBool();
}

std::vector<std::string> Carriers(StreamType type, const std::string& codec) {
    static const std::vector<std::string> all = RoomiestFirst();
    std::vector<std::string> carriers;
    // An attached picture is no film.
    for (const bool isCover : {false, true}) {
        for (const std::string& container : all) {
            const std::vector<std::string> offered = Planner::OfferedCodecs(container, type);
            if (std::ranges::find(offered, codec) == offered.end()) continue;
            if ((type == StreamType::Video && HasCoverOnly(container)) == isCover) carriers.push_back(container);
        }
    }
    return carriers;
}

std::string RoomiestContainer() { return RoomiestFirst().front(); }

std::vector<std::string> ValuesToTry(const Kestro::Conf::IPropertyConstraint& constraint) {
    const Planner::Domain domain = Planner::DescribeDomain(constraint);
    std::vector<std::string> values;
    for (const Planner::Domain::Entry& entry : domain.entries) {
        const Property* width = entry.value.FindByPath(IFormatCodecVideo::TAG_WIDTH);
        const Property* height = entry.value.FindByPath(IFormatCodecVideo::TAG_HEIGHT);
        const bool isSize = width != nullptr && height != nullptr;
        values.push_back(isSize ? PropertyValueToString(*width) + "x" + PropertyValueToString(*height)
                                : PropertyValueToString(entry.value));
    }
    if (domain.min) values.push_back(PropertyValueToString(*domain.min));
    if (domain.max) values.push_back(PropertyValueToString(*domain.max));
    return values;
}

std::vector<OfferedValues> ConstraintValues(const IDataHelper& helper) {
    Kestro::Conf::ConstraintMap constraints;
    helper.FillConstraints(constraints);
    std::vector<OfferedValues> offered;
    for (const auto& [path, constraint] : constraints) offered.push_back({path, ValuesToTry(*constraint)});
    return offered;
}

std::vector<CodecRuleValues> CodecRules(const IDataHelper& helper) {
    Kestro::Conf::ValidationRuleList rules;
    helper.FillValidationRules(rules);
    std::vector<CodecRuleValues> found;
    for (const auto& [path, rule] : rules) {
        const std::string filter = FilterOf(rule->GetSecondName());
        if (filter.empty() || !rule->GetFirstName().ends_with(Kestro::Conf::IFormatCodec::TAG_CODEC_ID)) continue;
        found.push_back({.codecs = ValuesToTry(*rule->GetFirstConstraint()),
                         .filter = {rule->GetSecondName(), ValuesToTry(*rule->GetSecondConstraint())},
                         .type = Kestro::Proc::FilterRecord::Find(filter)->type});
    }
    return found;
}

std::string FilterOf(const std::string& path) {
    const std::string first = path.substr(0, path.find(Property::SEPARATOR));
    return Kestro::Proc::FilterRecord::Find(first) != nullptr ? first : std::string();
}

}  // namespace App
