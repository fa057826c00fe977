#include "Kestro/Planner/Probe.h"

extern "C" {
#include <libavformat/avformat.h>
}

#include "Kestro/Planner/DescribeStream.h"
#include "Kestro/Planner/OpenInput.h"

namespace Kestro::Planner {

std::string FileUrl(const std::string& path) { return "file:" + path; }

MediaInfo Probe(const std::string& path, const ProbeOptions& options) {
    OpenInput input(path, options);
    AVFormatContext* context = &input.ReadHeaders();

    MediaInfo info;
    info.path = options.name.empty() ? path : options.name;
    info.sequence = input.Sequence();
    info.demuxer = context->iformat->name;
    if (context->duration > 0) info.duration = static_cast<double>(context->duration) / AV_TIME_BASE;
    info.isDurationGuessed = context->duration_estimation_method == AVFMT_DURATION_FROM_BITRATE;
    info.chapters = static_cast<int>(context->nb_chapters);
    for (unsigned i = 0; i < context->nb_streams; ++i) {
        info.streams.push_back(DescribeStream(*context, *context->streams[i]));
    }
    info.isEmpty = !LookAtFrames(*context, info.streams);
    return info;
}

}  // namespace Kestro::Planner
