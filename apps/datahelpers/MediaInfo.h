#pragma once

#include <boost/rational.hpp>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Kestro/Conf/StreamType.h"

namespace App {

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

/// What is known of a media file.
struct MediaInfo {
    std::string path;
    std::string demuxer;             ///< FFmpeg's name
    std::optional<double> duration;  ///< seconds
    std::vector<MediaStream> streams;
};

/// The name as FFmpeg takes it: a file, whatever characters it has and begins with.
std::string FileUrl(const std::string& path);

/// Whether FFmpeg's demuxer of that name takes file names for patterns unless told otherwise.
bool ReadsPatterns(const std::string& demuxer);

/// Reads the file's headers. Throws Failure (WrongUsage) for what is no readable media file.
/// picture: the codec id of the one picture that the file is; some codecs show in nothing but a file's name.
MediaInfo Probe(const std::string& path, const std::string& picture = {});

}  // namespace App
