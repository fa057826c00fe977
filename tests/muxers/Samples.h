#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
}

#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace MuxerTest {

struct Free {
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
    void operator()(AVCodecParameters* parameters) const { avcodec_parameters_free(&parameters); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
template <class T>
using Owned = std::unique_ptr<T, Free>;

/// A short stream of one codec.
struct Sample {
    std::string codecId;  ///< of the vocabulary, or FFmpeg's name
    Owned<AVCodecParameters> parameters;
    AVRational timeBase{1, 25};
    std::vector<Owned<AVPacket>> packets;
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
