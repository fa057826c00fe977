#pragma once

#include <map>
#include <string>
#include <vector>

#include "Kestro/Conf/StreamType.h"
#include "Kestro/Planner/Preset.h"

namespace App {

namespace Planner = Kestro::Planner;
using Kestro::Conf::StreamType;

/// What a combination is made from: the clip, or one stream alone that is in a codec already.
struct Footage {
    std::string subtitles = {};  ///< the clip's, where texts do not do
    bool hasCover = false;       ///< the clip has an attached picture, too
    std::string codec = {};      ///< of the stream that stands alone; empty: the clip
    StreamType type = {};        ///< its type

    /// A file name without its ending.
    std::string Name() const;
};

/// What the library offers, and one row of a proof shall carry out.
struct Combination {
    std::string about;  ///< "default", "pair", "mode", "profile", "value", "automatic", "copy", "filter" or "format"
    std::string container;                          ///< empty: none takes the codec
    std::map<StreamType, std::string> codecs = {};  ///< that are asked for; the others are the container's own
    std::vector<Planner::Change> settings = {};     ///< that are asked for
    bool isCopy = false;                            ///< the footage's stream goes into the output as it is
    Footage footage = {};
    std::vector<std::string> touches = {};  ///< helpers beside those of the container and the codecs

    /// The same in every run of every version: "format=mp4 video=h264 subtitles=mov_text".
    std::string Id() const;
};

/// "video", "audio", "subtitles": a kind of stream as a row names it.
const char* KindName(StreamType type);

}  // namespace App
