#include "Registry.h"

#include <algorithm>

#include "Kestro/Conf/DataHelpers/DataHelperProxyAuto.h"
#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Core/Property.h"
#include "Kestro/Proc/IFilterAudioFormatter.h"
#include "Kestro/Proc/IFilterAudioVolume.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResample.h"
#include "Kestro/Proc/IFilterResize.h"

#include "Text.h"

namespace App {
namespace {

using Kestro::Conf::IFormatCodec;
using Kestro::Conf::IFormatCodecAudio;
using Kestro::Conf::IFormatCodecVideo;
using Kestro::Conf::IPreset;
using Kestro::Conf::StreamType;

constexpr const HelperKind* kKinds[] = {&kFormats, &kAudioCodecs, &kVideoCodecs, &kFilters};

const StreamKind kStreamKinds[] = {
    {StreamType::Video, IPreset::STREAM_TYPE_VIDEO, IPreset::KEY_FILTER_VIDEO_CODEC,
     IFormatCodecVideo::TAG_FORMAT_CODEC_VIDEO, kVideoCodecs},
    {StreamType::Audio, IPreset::STREAM_TYPE_AUDIO, IPreset::KEY_FILTER_AUDIO_CODEC,
     IFormatCodecAudio::TAG_FORMAT_CODEC_AUDIO, kAudioCodecs},
};

// The library has a table of its filters, but no way to list it.
const FilterKind kFilterKinds[] = {
    {Kestro::Proc::IFilterResample::CLASS_ID, StreamType::Audio},
    {Kestro::Proc::IFilterAudioVolume::CLASS_ID, StreamType::Audio},
    {Kestro::Proc::IFilterAudioFormatter::CLASS_ID, StreamType::Audio},
    {Kestro::Proc::IFilterFrameRate::CLASS_ID, StreamType::Video},
    {Kestro::Proc::IFilterResize::CLASS_ID, StreamType::Video},
};

HelperPtr Find(const HelperKind& kind, const std::string& name, ExitStatus status, decltype(CreateDataHelper)& create) {
    const std::vector<std::string> names = HelperNames(kind);
    if (std::ranges::find(names, name) == names.end()) {
        throw Failure(status, Problem{.message = "There is no " + std::string(kind.words) + " \"" + Printable(name) +
                                                 "\"." + DidYouMean(name, names),
                                      .value = name,
                                      .allowed = names});
    }
    return kind.registryType == nullptr ? create(name, {}) : create(*kind.registryType, name);
}

}  // namespace

const HelperKind kFormats{"format", "formats", "container format", &IPreset::KEY_FORMAT};
const HelperKind kAudioCodecs{"audio", "audio", "audio codec", &IPreset::KEY_FILTER_AUDIO_CODEC};
const HelperKind kVideoCodecs{"video", "video", "video codec", &IPreset::KEY_FILTER_VIDEO_CODEC};
const HelperKind kFilters{"filter", "filters", "filter", nullptr};

std::span<const HelperKind* const> HelperKinds() { return kKinds; }

std::span<const StreamKind> StreamKinds() { return kStreamKinds; }

std::span<const FilterKind> FilterKinds() { return kFilterKinds; }

std::string StreamKind::CodecIdPath() const {
    const std::string& separator = Kestro::Core::Property::SEPARATOR;
    return IPreset::KEY_STREAMS + IPreset::INDEX + typeId + separator + codecKey + separator +
           IFormatCodec::TAG_CODEC_ID;
}

std::vector<std::string> HelperNames(const HelperKind& kind) {
    std::vector<std::string> names;
    if (kind.registryType == nullptr) {
        for (const FilterKind& filter : kFilterKinds) names.push_back(filter.classId);
        return names;
    }
    for (const auto& [name, helper] : GetAvailableDataHelpers(*kind.registryType)) names.push_back(name);
    return names;
}

HelperPtr FindHelper(const HelperKind& kind, const std::string& name, ExitStatus status) {
    return Find(kind, name, status, CreateDataHelper);
}

HelperPtr FindAutomaticHelper(const HelperKind& kind, const std::string& name, ExitStatus status) {
    return Find(kind, name, status, CreateDataHelperAuto);
}

}  // namespace App
