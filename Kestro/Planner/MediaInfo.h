#pragma once

#include <boost/rational.hpp>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Kestro/Conf/StreamType.h"
#include "Kestro/Planner/Export.h"

namespace Kestro::Planner {

/// What is known of one stream of a media file. Values that do not apply to its kind, or are unknown, are 0 or empty.
struct MediaStream {
    int index = 0;                                 ///< in the file
    std::optional<Kestro::Conf::StreamType> type;  ///< none: data, attachments
    std::string codec;                             ///< FFmpeg's codec descriptor name

    int64_t width = 0;   ///< pixels, as the picture is shown: after the rotation that the file asks for
    int64_t height = 0;  ///< pixels
    boost::rational<int64_t> sampleAspectRatio = 1;
    boost::rational<int64_t> fps = 0;
    bool isCover = false;  ///< an attached picture

    int64_t sampleRate = 0;    ///< Hz
    std::string layout;        ///< FFmpeg's name
    std::string sampleFormat;  ///< FFmpeg's name
};

/// Whether a stream is one that can be converted from: damaged ones have no size or sample rate.
bool IsUsable(const MediaStream& stream);

/// "video", "cover", "audio", "subtitle" or "data".
KESTRO_PLANNER_API const char* TypeName(const MediaStream& stream);
/// The same for sentences: "cover picture", "subtitles".
const char* TypeInWords(const MediaStream& stream);

/// What is known of a media file.
struct MediaInfo {
    std::string path;
    std::string demuxer;             ///< FFmpeg's name
    std::optional<double> duration;  ///< seconds
    std::vector<MediaStream> streams;
};

}  // namespace Kestro::Planner
