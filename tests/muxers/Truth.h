#pragma once

#include <map>
#include <string>
#include <vector>

#include "Samples.h"

namespace MuxerTest {

/// What became of a stream in a container.
enum class Fate {
    Read,     ///< written, and read back as the same codec
    Other,    ///< written, and read back as another codec or not at all
    Refused,  ///< the muxer did not take the header, a packet or the end
    Hung,     ///< killed
};

/// Every muxer that a container's name leads to.
std::vector<std::string> Muxers();
/// Every codec of the vocabulary, Opus and WebVTT.
std::vector<std::string> Codecs();

/// Writes a short stream of a codec with a muxer, alone or beside the stream that the container insists on, and reads
/// it back with the container's demuxer.
class Truth {
public:
    /// Of sound, at one of the usual sample rates in stereo.
    Fate Of(const std::string& muxer, const std::string& codecId);
    /// Nothing where there is no such stream.
    std::optional<Fate> Of(const std::string& muxer, const std::string& codecId, SampleKind kind);
    bool IsSynthetic(const std::string& codecId);

private:
    const Sample* Find(const std::string& codecId, const SampleKind& kind);

    std::map<std::pair<std::string, SampleKind>, std::optional<Sample>> samples_;
};

}  // namespace MuxerTest
