#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Kestro/Conf/StreamRecord.h"

#include "catalogue/Proof.h"
#include "report/HelperReport.h"

/// What the pages tell: the helpers' sheets, and which container takes which codec.
namespace App::Catalogue {

/// How a container takes a codec.
enum class Standing {
    Default,   ///< offered, and the container's own choice
    Offered,   ///< streams are encoded with it
    Doubtful,  ///< offered, but the installed FFmpeg does not write it into this container
    Stored,    ///< not offered for encoding, but streams that have it can be copied
    Refused,
};

struct Cell {
    Standing standing;
    std::string reason;       ///< of Doubtful and Refused
    std::string proof;        ///< "proven" or "contradicts"; empty: nothing was tried, or to no end
    std::string proofReason;  ///< of "contradicts"
};

struct Codec {
    const Kestro::Conf::StreamRecord* kind;
    std::string id;
    std::string encoder;               ///< FFmpeg's, or empty
    std::vector<std::string> also;     ///< what people call it
    std::optional<HelperSheet> sheet;  ///< none: it is known, but not encoded
    bool isLeftToProgram = false;      ///< "auto", which no container stores
};

struct Container {
    std::string name;
    std::string muxer;  ///< FFmpeg's, or empty
    std::string extension;
    std::vector<std::string> also;
    bool isPicture = false;  ///< its files are single pictures
    HelperSheet sheet;
    std::vector<Cell> cells;  ///< for each of Knowledge::codecs

    /// The most streams of a kind; none: the container does not say.
    std::optional<int64_t> Limit(Kestro::Conf::StreamType type) const;
    /// The codec that it takes where nobody chooses; empty where there is none.
    std::string DefaultCodec(const Kestro::Conf::StreamRecord& kind) const;
};

struct Knowledge {
    std::vector<Codec> codecs;          ///< kind by kind
    std::vector<Container> containers;  ///< by name
    std::vector<HelperSheet> filters;
    std::string ffmpeg;  ///< its version
    std::optional<Proof> proof;
};

/// Asks the library and the installed FFmpeg everything. proofFile: or empty. Throws Failure for one that is none.
Knowledge GatherKnowledge(const std::string& proofFile);

/// "default", "offered", ...: also names of classes in the pages.
const char* Name(Standing standing);
/// A sentence about it, without a subject: "offered: streams are encoded with it".
const char* InWords(Standing standing);
/// One character that stands for it.
const char* Symbol(Standing standing);
inline bool IsTaken(Standing standing) { return standing != Standing::Refused; }
inline bool IsOffered(Standing standing) { return standing <= Standing::Doubtful; }

}  // namespace App::Catalogue
