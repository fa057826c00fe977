#include "Kestro/Planner/Plan.h"

#include <algorithm>

#include "Kestro/Conf/IPreset.h"
#include "Kestro/FFWrapper/MuxerNames.h"

namespace Kestro::Planner {

using Kestro::Conf::IPreset;
using Kestro::Core::Property;

void Account::Add(const Account& other) {
    const auto add = [](auto& entries, const auto& more) {
        for (const auto& entry : more) {
            if (std::ranges::find(entries, entry) == entries.end()) entries.push_back(entry);
        }
    };
    add(choices, other.choices);
    add(corrections, other.corrections);
    add(notes, other.notes);
}

const Property& Plan::FormatSettings() const { return settings[IPreset::KEY_FORMAT]; }

const Property& Plan::StreamSettings(std::size_t stream) const { return settings[IPreset::KEY_STREAMS][stream]; }

const Property& Plan::CodecSettings(std::size_t stream) const {
    return StreamSettings(stream)[streams[stream].kind->codecKey];
}

bool Plan::IsPicture() const { return FFWrapper::IsImageMuxer(muxer); }

}  // namespace Kestro::Planner
