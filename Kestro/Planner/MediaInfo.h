#pragma once

#include <array>
#include <boost/rational.hpp>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Kestro/Conf/StreamType.h"
#include "Kestro/Planner/Export.h"

namespace Kestro::Planner {

/// The colours that a stream's numbers mean, by FFmpeg's names (ITU-T H.273); empty: not told.
struct KESTRO_PLANNER_API Colour {
    std::string primaries;  ///< "bt709", "bt2020"
    std::string transfer;   ///< "bt709", "smpte2084"
    std::string matrix;     ///< "bt709", "bt2020nc"
    std::string range;      ///< "tv" or "pc"

    /// Whether the transfer is one of high dynamic range: PQ or HLG.
    bool IsHdr() const;
};

/// What the display showed on which a film was graded (SMPTE ST 2086), and its brightest light (CTA-861.3).
struct MasteringDisplay {
    std::array<int64_t, 8> chromaticities{};  ///< x and y of green, blue, red and white, in 1/50000
    int64_t maxLuminance = 0;                 ///< 1/10000 cd/m2
    int64_t minLuminance = 0;                 ///< 1/10000 cd/m2
    int64_t maxContentLight = 0;              ///< cd/m2; 0: not told
    int64_t maxAverageLight = 0;              ///< cd/m2, of a frame; 0: not told

    bool operator==(const MasteringDisplay&) const = default;
};

/// What is known of one stream of a media file. Values that do not apply to its kind, or are unknown, are 0 or empty.
struct MediaStream {
    int index = 0;                                 ///< in the file
    std::optional<Kestro::Conf::StreamType> type;  ///< none: data, attachments
    std::string codec;                             ///< FFmpeg's codec descriptor name
    int64_t codecTag = 0;                          ///< the file's name for it, four characters as a number
    std::string language;                          ///< as the file has it: "eng"
    std::string title;
    bool isDefault = false;     ///< played unless another is chosen
    bool isForced = false;      ///< subtitles that are always shown
    bool isAttachment = false;  ///< a file in the file, such as a font

    int64_t width = 0;     ///< pixels, as the picture is shown: after the rotation that the file asks for
    int64_t height = 0;    ///< pixels
    int64_t rotation = 0;  ///< degrees: by so much the file asks for the picture to be turned
    boost::rational<int64_t> sampleAspectRatio = 1;
    boost::rational<int64_t> fps = 0;
    bool isCover = false;   ///< an attached picture
    int64_t bitDepth = 0;   ///< of a colour's sample
    bool hasAlpha = false;  ///< the pixels may be transparent
    bool isInterlaced = false;
    bool isBottomFieldFirst = false;
    Colour colour;
    std::optional<MasteringDisplay> mastering;
    std::optional<double> duration = {};  ///< seconds, where the container tells it of each stream

    int64_t sampleRate = 0;    ///< Hz
    std::string layout;        ///< FFmpeg's name
    std::string sampleFormat;  ///< FFmpeg's name
};

/// Whether a stream is one that can be converted from: damaged ones have no size or sample rate.
bool IsUsable(const MediaStream& stream);

/// "video", "cover", "audio", "subtitle", "attachment" or "data".
KESTRO_PLANNER_API const char* TypeName(const MediaStream& stream);
/// The same for sentences: "cover picture", "subtitles".
const char* TypeInWords(const MediaStream& stream);
/// "Stream 2 of the input (subtitles, subrip, eng)".
std::string InWords(const MediaStream& stream);

/// A film of numbered pictures, each a file.
struct PictureSequence {
    boost::rational<int64_t> fps;  ///< so many are shown a second
    int64_t first = 0;             ///< its number
    int64_t count = 0;
};

/// What is known of a media file, or of a sequence of pictures.
struct MediaInfo {
    std::string path;                ///< or its name in messages; of a sequence with a number: "frames/%06d.png"
    std::string demuxer;             ///< FFmpeg's name
    std::optional<double> duration;  ///< seconds
    int chapters = 0;
    std::vector<MediaStream> streams;
    bool isDurationGuessed = false;  ///< from the bitrate, so it may be far off
    bool isEmpty = false;            ///< there is nothing in the streams
    std::optional<PictureSequence> sequence = {};
};

}  // namespace Kestro::Planner
