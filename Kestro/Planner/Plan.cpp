#include "Kestro/Planner/Plan.h"

#include "Kestro/Conf/IPreset.h"
#include "Kestro/FFWrapper/MuxerNames.h"

namespace Kestro::Planner {

using Kestro::Conf::IPreset;
using Kestro::Core::Property;

const Property& Plan::FormatSettings() const { return settings[IPreset::KEY_FORMAT]; }

const Property& Plan::StreamSettings(std::size_t stream) const { return settings[IPreset::KEY_STREAMS][stream]; }

const Property& Plan::CodecSettings(std::size_t stream) const {
    return StreamSettings(stream)[streams[stream].kind->codecKey];
}

bool Plan::IsPicture() const { return FFWrapper::IsImageMuxer(muxer); }

}  // namespace Kestro::Planner
