#include "Kestro/Planner/Helpers.h"

#include <algorithm>

#include "Kestro/Conf/DataHelpers/DataHelperProxyAuto.h"
#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/FFWrapper/EverydayNames.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Text.h"
#include "Kestro/Proc/FilterRecord.h"

namespace Kestro::Planner {
namespace {

using Conf::IPreset;

constexpr const HelperKind* kKinds[] = {&kFormats, &kAudioCodecs, &kVideoCodecs, &kFilters};

HelperPtr Find(const HelperKind& kind, const std::string& name, decltype(CreateDataHelper)& create) {
    if (kind.registryType == nullptr ? Proc::FilterRecord::Find(name) != nullptr
                                     : GetAvailableDataHelpers(*kind.registryType).contains(name)) {
        return kind.registryType == nullptr ? create(name, {}) : create(*kind.registryType, name);
    }
    const std::vector<std::string> names = HelperNames(kind);
    std::vector<std::string> words = names;
    for (const std::string& known : names) {
        const auto everyday =
            &kind == &kFormats ? FFWrapper::EverydayNamesOfContainer(known) : FFWrapper::EverydayNamesOfCodec(known);
        words.insert(words.end(), everyday.begin(), everyday.end());
    }
    throw NotAcceptable({.code = ProblemCode::UnknownName,
                         .message = "There is no " + std::string(kind.words) + " \"" + Printable(name) + "\"." +
                                    DidYouMean(name, words),
                         .value = name,
                         .allowed = names});
}

}  // namespace

const HelperKind kFormats{"format", "formats", "container format", &IPreset::KEY_FORMAT};
const HelperKind kAudioCodecs{"audio", "audio", "audio codec", &IPreset::KEY_FILTER_AUDIO_CODEC};
const HelperKind kVideoCodecs{"video", "video", "video codec", &IPreset::KEY_FILTER_VIDEO_CODEC};
const HelperKind kFilters{"filter", "filters", "filter", nullptr};

std::span<const HelperKind* const> HelperKinds() { return kKinds; }

const HelperKind& CodecsOf(Conf::StreamType type) {
    return type == Conf::StreamType::Video ? kVideoCodecs : kAudioCodecs;
}

std::vector<std::string> HelperNames(const HelperKind& kind) {
    std::vector<std::string> names;
    if (kind.registryType == nullptr) {
        for (const Proc::FilterRecord& filter : Proc::FilterRecord::All()) names.push_back(filter.classId);
        return names;
    }
    for (const auto& [name, helper] : GetAvailableDataHelpers(*kind.registryType)) names.push_back(name);
    return names;
}

std::string NameMeantBy(const HelperKind& kind, const std::string& word) {
    if (kind.registryType == nullptr) return word;
    const auto& known = GetAvailableDataHelpers(*kind.registryType);
    if (known.contains(word)) return word;
    const std::string everyday =
        &kind == &kFormats ? FFWrapper::ContainerOfEverydayName(word) : FFWrapper::CodecOfEverydayName(word);
    for (const std::string& name : {Lowered(word), everyday}) {
        if (known.contains(name)) return name;
    }
    return word;
}

HelperPtr FindHelper(const HelperKind& kind, const std::string& name) { return Find(kind, name, CreateDataHelper); }

HelperPtr FindAutomaticHelper(const HelperKind& kind, const std::string& name) {
    return Find(kind, name, CreateDataHelperAuto);
}

}  // namespace Kestro::Planner
