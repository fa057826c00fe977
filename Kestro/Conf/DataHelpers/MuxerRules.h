#pragma once

#include <cstdint>  // before FFmpeg's headers, which want its macros

extern "C" {
#include <libavformat/avformat.h>
}

#include <span>
#include <string>

#include "Kestro/Conf/IFormatCodec.h"

namespace Kestro::Conf {

/// What a muxer stores of an audio codec, where that is not all.
struct AudioLimits {
    AVCodecID codec;
    std::span<const int64_t> sampleRates = {};  ///< Hz; empty: any
    int mostChannels = 0;                       ///< 0: any number
};

/// The codecs that a muxer of FFmpeg writes so that FFmpeg's demuxer reads the same stream back, beyond the muxer's
/// default codecs. Found by writing and reading a stream of each; tools/ has the program that does it.
struct MuxerRule {
    const char* muxer;                           ///< FFmpeg's short name
    unsigned since = 0;                          ///< major version of libavformat; a later row of a muxer replaces one
    bool fromTagTable = false;                   ///< those that its tag tables hold
    std::span<const AVCodecID> alsoStores = {};  ///< and these
    std::span<const AVCodecID> exceptFor = {};   ///< but not these of its tag tables
    std::span<const AudioLimits> audioLimits = {};
    bool pixelsOfEncoder = false;  ///< a picture's pixel format must be one that its encoder takes
    bool copiesHdmv = false;       ///< MPEG-2 of a Blu-ray disc
};

/// A muxer of the installed FFmpeg, and what is known of it.
struct Muxer {
    const AVOutputFormat* format = nullptr;
    const MuxerRule* rule = nullptr;  ///< null: nothing, and its tag tables must do
};

/// By the name of a container, which need not be the muxer's, as av_guess_format takes it ("mp4", "MP4", "Matroska").
/// No format: FFmpeg has no such muxer.
Muxer FindMuxer(const std::string& container);

/// Whether the muxer stores a stream of that codec, which is none of its defaults. The description has a codec id and
/// a codec tag.
bool Stores(const Muxer& muxer, AVCodecID id, const IFormatCodec& codec);

}  // namespace Kestro::Conf
