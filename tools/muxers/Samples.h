#pragma once

#include <compare>
#include <string>
#include <vector>

#include "tools/muxers/Ffmpeg.h"

namespace Measure {

/// A short stream of one codec.
struct Sample {
    std::string codecId;  ///< of the vocabulary, or FFmpeg's name
    Ffmpeg::Parameters parameters;
    AVRational timeBase{1, 25};
    std::vector<Ffmpeg::Packet> packets;
    bool isSynthetic = false;  ///< a description with meaningless packets: FFmpeg has no encoder
};

/// How a sample is made.
struct SampleKind {
    bool globalHeader = false;
    int sampleRate = 44100;  ///< Hz; of audio
    int channels = 2;        ///< in the first of the encoder's layouts with so many

    friend auto operator<=>(const SampleKind&, const SampleKind&) = default;
};

/// One of the encoder that is used for the codec and, where that is another, one of FFmpeg's own choice. None where
/// they do not take the sample rate or the channels.
std::vector<Sample> MakeSamples(const std::string& codecId, const SampleKind& kind);

}  // namespace Measure
