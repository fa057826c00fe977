#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "tools/muxers/MuxerData.h"

namespace Measure {

/// What CodecIsSupported says of a codec without a tag, in any sound or in one.
bool IsSupported(const std::string& container, const std::string& codec, const std::optional<Sound>& sound = {});

/// Of one muxer and codec, in any sound or in one: what was measured, and what is said of it.
struct Verdict {
    std::string muxer;
    std::string codec;
    std::optional<Sound> sound;
    bool isStored = false;
    bool isSupported = false;          ///< CodecIsSupported
    bool isSupportedByFfmpeg = false;  ///< avformat_query_codec, which is not asked for sounds
};

/// Every muxer with every codec that was tried and, where the codec is stored, every sound of it.
std::vector<Verdict> Compare(const MuxerData& data);

/// A table of how often each is right and wrong of a muxer and a codec, and where CodecIsSupported is wrong.
void Print(std::ostream& out, const std::vector<Verdict>& verdicts);

}  // namespace Measure
