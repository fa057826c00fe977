#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
}

#include <memory>

/// FFmpeg's objects, freed with their owner.
namespace Kestro::Ffmpeg {

struct Free {
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
    void operator()(AVCodecParameters* parameters) const { avcodec_parameters_free(&parameters); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
using Parameters = std::unique_ptr<AVCodecParameters, Free>;
using Context = std::unique_ptr<AVCodecContext, Free>;
using Frame = std::unique_ptr<AVFrame, Free>;
using Packet = std::unique_ptr<AVPacket, Free>;

/// FFmpeg's own decoder for what an opened encoder writes; null when it does not open.
inline Context OpenDecoder(const AVCodecContext& encoder) {
    const Parameters parameters(avcodec_parameters_alloc());
    avcodec_parameters_from_context(parameters.get(), &encoder);
    Context decoder(avcodec_alloc_context3(avcodec_find_decoder(encoder.codec_id)));
    avcodec_parameters_to_context(decoder.get(), parameters.get());
    if (avcodec_open2(decoder.get(), nullptr, nullptr) < 0) return nullptr;
    return decoder;
}

}  // namespace Kestro::Ffmpeg
