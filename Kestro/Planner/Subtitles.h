#pragma once

#include <string>

#include "Kestro/Planner/CheckedPreset.h"
#include "Kestro/Planner/MediaInfo.h"

namespace Kestro::Planner {

/// How subtitles come into a container.
struct SubtitleWay {
    std::string codecId;   ///< of the output
    bool isCopied = true;  ///< the packets stay as they are
    std::string obstacle;  ///< why there is no way; empty: there is
};

/// Subtitles stay what they are where the container stores them; texts become the first kind of text that it offers,
/// or the one that the preset names. Pictures are never made texts, nor texts pictures.
SubtitleWay FindSubtitleWay(const CheckedPreset& preset, const PresetStream& wanted, const MediaStream& source,
                            const std::string& muxer);

}  // namespace Kestro::Planner
