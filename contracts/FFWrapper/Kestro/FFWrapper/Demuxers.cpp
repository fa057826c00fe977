#include "Kestro/FFWrapper/Demuxers.h"

extern "C" {
#include <libavformat/avformat.h>
}

#include <algorithm>

namespace Kestro::FFWrapper {

bool OpensOtherFiles(const std::string& demuxer) {
    // Playlists, scripts, descriptions of sessions, and indexes with their data beside them.
    static constexpr const char* kDemuxers[] = {
        "avisynth", "concat", "dash", "hls", "imf",         "lavfi",  "mlv",
        "rtp",      "rtsp",   "sap",  "sdp", "vapoursynth", "vobsub", "webm_dash_manifest",
    };
    const std::string name = DemuxerOption(demuxer);
    return std::ranges::any_of(kDemuxers, [&name](const char* known) { return name == known; });
}

bool DemuxerExists(const std::string& demuxer) {
    return av_find_input_format(DemuxerOption(demuxer).c_str()) != nullptr;
}

std::string DemuxerOption(const std::string& demuxer) { return demuxer.substr(0, demuxer.find(',')); }

}  // namespace Kestro::FFWrapper
