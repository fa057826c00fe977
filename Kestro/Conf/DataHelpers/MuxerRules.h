#pragma once

extern "C" {
#include <libavformat/avformat.h>
}

#include <cstdint>
#include <span>
#include <string>

namespace Kestro::Conf {

/// What a muxer insists on of a sound that it takes otherwise.
struct SoundRule {
    AVCodecID codec;
    std::span<const int64_t> sampleRates = {};  ///< Hz; empty: any
    int mostChannels = 0;                       ///< 0: any number
};

/// The codecs that a muxer of FFmpeg writes so that FFmpeg's demuxer reads the same stream back, beyond the muxer's
/// default codecs. Derived from FFmpeg 5.1 and 7.1 by writing and reading a stream of each. What differs goes by the
/// headers' version, whose major number is that of the library that is loaded.
struct MuxerRule {
    const char* muxer;                     ///< FFmpeg's short name
    bool byTags = false;                   ///< those that its tag tables hold
    std::span<const AVCodecID> more = {};  ///< and these
    std::span<const AVCodecID> less = {};  ///< but not these
    std::span<const SoundRule> sounds = {};
};

/// A muxer of the installed FFmpeg, and what is known of it.
struct Muxer {
    const AVOutputFormat* format = nullptr;
    const MuxerRule* rule = nullptr;  ///< null: nothing, and its tag tables must do
};

/// By the name of a container, which need not be the muxer's. No format: FFmpeg has no such muxer.
Muxer FindMuxer(const std::string& container);

}  // namespace Kestro::Conf
