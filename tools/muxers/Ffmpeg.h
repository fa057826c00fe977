#pragma once

#include <cstdint>  // before FFmpeg's headers, which want its macros

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include <memory>

/// FFmpeg's objects, freed with their owner.
namespace Measure::Ffmpeg {

struct Free {
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
    void operator()(AVCodecParameters* parameters) const { avcodec_parameters_free(&parameters); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
using Encoder = std::unique_ptr<AVCodecContext, Free>;
using Parameters = std::unique_ptr<AVCodecParameters, Free>;
using Frame = std::unique_ptr<AVFrame, Free>;
using Packet = std::unique_ptr<AVPacket, Free>;

struct FreeOutput {
    void operator()(AVFormatContext* context) const {
        if ((context->oformat->flags & AVFMT_NOFILE) == 0) avio_closep(&context->pb);
        avformat_free_context(context);
    }
};
using Output = std::unique_ptr<AVFormatContext, FreeOutput>;

struct CloseInput {
    void operator()(AVFormatContext* context) const { avformat_close_input(&context); }
};
using Input = std::unique_ptr<AVFormatContext, CloseInput>;

}  // namespace Measure::Ffmpeg
