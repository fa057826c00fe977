#include "Kestro/FFWrapper/EncoderCapabilities.h"

#include <cstddef>
#include <span>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavutil/channel_layout.h>
#include <libavutil/pixdesc.h>
}

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/FFWrapper/SampleFormatMapping.h"

namespace Kestro::FFWrapper {
namespace {

/// FFmpeg's own AAC encoder.
constexpr const char* kAac = "aac";

#if LIBAVCODEC_VERSION_INT >= AV_VERSION_INT(61, 13, 100)

template <class Value>
std::span<const Value> Supported(const AVCodec& encoder, AVCodecConfig config) {
    const void* values = nullptr;
    int count = 0;
    // Fails for what does not concern the encoder, such as the pixel formats of an audio encoder.
    if (avcodec_get_supported_config(nullptr, &encoder, config, 0, &values, &count) < 0 || values == nullptr) return {};
    return {static_cast<const Value*>(values), static_cast<std::size_t>(count)};
}

auto SampleRates(const AVCodec& encoder) { return Supported<int>(encoder, AV_CODEC_CONFIG_SAMPLE_RATE); }
auto SampleFormats(const AVCodec& encoder) { return Supported<AVSampleFormat>(encoder, AV_CODEC_CONFIG_SAMPLE_FORMAT); }
auto Layouts(const AVCodec& encoder) { return Supported<AVChannelLayout>(encoder, AV_CODEC_CONFIG_CHANNEL_LAYOUT); }
auto PixelFormats(const AVCodec& encoder) { return Supported<AVPixelFormat>(encoder, AV_CODEC_CONFIG_PIX_FORMAT); }
auto FrameRates(const AVCodec& encoder) { return Supported<AVRational>(encoder, AV_CODEC_CONFIG_FRAME_RATE); }

#else

// The values before the one that ends the list.
template <class Value, class IsEnd>
std::span<const Value> Supported(const Value* values, IsEnd isEnd) {
    std::size_t count = 0;
    while (values != nullptr && !isEnd(values[count])) ++count;
    return {values, count};
}

auto SampleRates(const AVCodec& encoder) {
    return Supported(encoder.supported_samplerates, [](int rate) { return rate == 0; });
}
auto SampleFormats(const AVCodec& encoder) {
    return Supported(encoder.sample_fmts, [](AVSampleFormat format) { return format == AV_SAMPLE_FMT_NONE; });
}
auto Layouts(const AVCodec& encoder) {
    return Supported(encoder.ch_layouts, [](const AVChannelLayout& layout) { return layout.nb_channels == 0; });
}
auto PixelFormats(const AVCodec& encoder) {
    return Supported(encoder.pix_fmts, [](AVPixelFormat format) { return format == AV_PIX_FMT_NONE; });
}
auto FrameRates(const AVCodec& encoder) {
    return Supported(encoder.supported_framerates, [](AVRational rate) { return rate.num == 0 && rate.den == 0; });
}

#endif

}  // namespace

std::optional<EncoderCapabilities> EncoderCapabilities::Find(const std::string& encoderName) {
    const AVCodec* encoder = avcodec_find_encoder_by_name(encoderName.c_str());
    if (encoder == nullptr) return std::nullopt;

    EncoderCapabilities capabilities;
    const auto rates = SampleRates(*encoder);
    capabilities.sampleRates.assign(rates.begin(), rates.end());
    for (const AVSampleFormat format : SampleFormats(*encoder)) {
        capabilities.sampleFormats.push_back(SampleFormatKestroFromFFMPEG(format));
    }
    for (const AVChannelLayout& layout : Layouts(*encoder)) {
        if (layout.order == AV_CHANNEL_ORDER_NATIVE) capabilities.channelLayouts.push_back(layout.u.mask);
    }
    for (const AVPixelFormat format : PixelFormats(*encoder)) {
        if (const char* name = av_get_pix_fmt_name(format)) capabilities.pixelFormats.emplace_back(name);
    }
    if (encoderName == kAac) {
        capabilities.profiles = {Conf::IFormatCodecAudio::TAG_AAC_PROFILE_LOW,
                                 Conf::IFormatCodecAudio::TAG_AAC_PROFILE_LTP};
    }
    for (const AVRational rate : FrameRates(*encoder)) capabilities.frameRates.emplace_back(rate.num, rate.den);
    return capabilities;
}

}  // namespace Kestro::FFWrapper
