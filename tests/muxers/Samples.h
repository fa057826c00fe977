#pragma once

#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "tests/Ffmpeg.h"

namespace MuxerTest {

namespace Ffmpeg = Kestro::Ffmpeg;

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
    int sampleRate = 44100;  ///< Hz; of sound
    int channels = 2;        ///< in FFmpeg's usual layout for so many

    friend bool operator<(const SampleKind& a, const SampleKind& b) {
        return std::tie(a.globalHeader, a.sampleRate, a.channels) < std::tie(b.globalHeader, b.sampleRate, b.channels);
    }
};

/// Nothing for a codec that FFmpeg does not know, and where the encoder does not take the sample rate or the channels.
std::optional<Sample> MakeSample(const std::string& codecId, const SampleKind& kind);

}  // namespace MuxerTest
