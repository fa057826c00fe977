#pragma once

#include <cstddef>
#include <span>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavutil/channel_layout.h>
}

/// The lists of values that an encoder takes, as each version of FFmpeg tells them; an empty list is no restriction.
namespace Kestro::FFWrapper {

#if LIBAVCODEC_VERSION_INT >= AV_VERSION_INT(61, 13, 100)

template <class Value>
std::span<const Value> Supported(const AVCodec& encoder, AVCodecConfig config) {
    const void* values = nullptr;
    int count = 0;
    // Fails for what does not concern the encoder, such as the pixel formats of an audio encoder.
    if (avcodec_get_supported_config(nullptr, &encoder, config, 0, &values, &count) < 0 || values == nullptr) return {};
    return {static_cast<const Value*>(values), static_cast<std::size_t>(count)};
}

inline auto SampleRates(const AVCodec& encoder) { return Supported<int>(encoder, AV_CODEC_CONFIG_SAMPLE_RATE); }
inline auto SampleFormats(const AVCodec& encoder) {
    return Supported<AVSampleFormat>(encoder, AV_CODEC_CONFIG_SAMPLE_FORMAT);
}
inline auto Layouts(const AVCodec& encoder) {
    return Supported<AVChannelLayout>(encoder, AV_CODEC_CONFIG_CHANNEL_LAYOUT);
}
inline auto PixelFormats(const AVCodec& encoder) {
    return Supported<AVPixelFormat>(encoder, AV_CODEC_CONFIG_PIX_FORMAT);
}
inline auto FrameRates(const AVCodec& encoder) { return Supported<AVRational>(encoder, AV_CODEC_CONFIG_FRAME_RATE); }

#else

// The values before the one that ends the list.
template <class Value, class IsEnd>
std::span<const Value> Supported(const Value* values, IsEnd isEnd) {
    std::size_t count = 0;
    while (values != nullptr && !isEnd(values[count])) ++count;
    return {values, count};
}

inline auto SampleRates(const AVCodec& encoder) {
    return Supported(encoder.supported_samplerates, [](int rate) { return rate == 0; });
}
inline auto SampleFormats(const AVCodec& encoder) {
    return Supported(encoder.sample_fmts, [](AVSampleFormat format) { return format == AV_SAMPLE_FMT_NONE; });
}
inline auto Layouts(const AVCodec& encoder) {
    return Supported(encoder.ch_layouts, [](const AVChannelLayout& layout) { return layout.nb_channels == 0; });
}
inline auto PixelFormats(const AVCodec& encoder) {
    return Supported(encoder.pix_fmts, [](AVPixelFormat format) { return format == AV_PIX_FMT_NONE; });
}
inline auto FrameRates(const AVCodec& encoder) {
    return Supported(encoder.supported_framerates, [](AVRational rate) { return rate.num == 0 && rate.den == 0; });
}

#endif

}  // namespace Kestro::FFWrapper
