#pragma once

#include <map>
#include <string>
#include <vector>

#include "Kestro/Planner/CheckedPreset.h"
#include "Kestro/Planner/MediaInfo.h"

namespace Kestro::Planner {

/// An output stream to be: what the preset asks for, and the input's stream that it is made of.
struct Track {
    const PresetStream* wanted;
    const MediaStream* source;
};

/// Which of the input's streams are converted, and why the others are not.
struct Tracks {
    std::vector<Track> taken;            ///< in the order of the output
    std::map<int, std::string> left;     ///< by the stream's index: the reason
    std::vector<std::string> unmatched;  ///< sentences on the preset's streams that the input has nothing for
};

/// A preset's only stream of a kind stands for all of the input's, the default ones first where the container takes
/// fewer; several streams take one each. Where tracks are chosen, those are taken alone. Throws NotAcceptable
/// (NoSuchStream) for a chosen track that the input lacks.
///
/// formatSettings: the plan's, with the limits. The references must outlive the result.
Tracks ChooseTracks(const CheckedPreset& preset, const MediaInfo& input, const Core::Property& formatSettings,
                    const std::string& muxer);

/// Adds what goes with a film although the preset does not list it, subtitles, and sets the tracks that are chosen
/// beside the settings. defaults: the container's. Throws NotAcceptable (NoSuchStream).
void CompleteTracks(const Preset& preset, const Core::Property& defaults, std::vector<PresetStream>& streams);

/// Where a format node keeps the most streams of that kind: "Limits/MaxAudio".
std::string LimitPath(Conf::StreamType type);
/// The most streams of that kind that the container takes, and the preset allows; negative: no limit is known.
int64_t StreamLimit(const CheckedPreset& preset, const Core::Property& formatSettings, Conf::StreamType type);

/// Whether the stream is to be the cover picture of a file.
bool WantsCover(const PresetStream& stream);

}  // namespace Kestro::Planner
