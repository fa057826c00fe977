#include "AudioEncoder.h"

extern "C" {
#include <libavutil/opt.h>
}

#include <algorithm>
#include <iterator>
#include <random>

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/LayoutRecord.h"

#include "tests/Ffmpeg.h"

namespace Kestro::Conf {
namespace {

using Ffmpeg::Context;
using Ffmpeg::Frame;
using Ffmpeg::Packet;

/// The two ends of an encoder's scale of quality.
struct QualityScale {
    const char* encoder;
    float worst;
    float best;
};
constexpr QualityScale kScales[] = {{"libmp3lame", 9.0F, 0.0F}, {"libvorbis", 0.0F, 10.0F}};

void SetQuality(AVCodecContext& context, int64_t quality) {
    const auto* scale = std::find_if(std::begin(kScales), std::end(kScales), [&](const QualityScale& row) {
        return context.codec->name == std::string(row.encoder);
    });
    if (scale == std::end(kScales)) return;
    const float part = static_cast<float>(quality - 1) / static_cast<float>(IFormatCodec::MAX_QUALITY - 1);
    context.flags |= AV_CODEC_FLAG_QSCALE;
    context.global_quality = static_cast<int>(FF_QP2LAMBDA * (scale->worst + part * (scale->best - scale->worst)));
}

std::string LayoutName(const AVChannelLayout& layout) {
    char name[64] = {};
    av_channel_layout_describe(&layout, name, sizeof name);
    return name;
}

/// Null when it does not open.
Context Open(const std::string& encoderName, const Core::Property& codec) {
    const AVCodec* encoder = avcodec_find_encoder_by_name(encoderName.c_str());
    Context context(avcodec_alloc_context3(encoder));
    context->sample_rate = static_cast<int>(codec[IFormatCodecAudio::TAG_SAMPLE_RATE].GetInt64());
    context->time_base = {1, context->sample_rate};
    context->sample_fmt = av_get_sample_fmt(codec[IFormatCodecAudio::TAG_SAMPLE_FORMAT].GetString().c_str());
    const LayoutRecord* layout = LayoutRecord::Find(codec[IFormatCodecAudio::TAG_LAYOUT].GetString());
    av_channel_layout_from_mask(&context->ch_layout, layout->ffmpegMask);
    context->strict_std_compliance = FF_COMPLIANCE_EXPERIMENTAL;
    const bool isVariable = codec[IFormatCodec::TAG_BITRATE_MODE].GetString() == IFormatCodec::TAG_BITRATE_MODE_VBR;
    if (codec.ChildExists(IFormatCodec::TAG_BITRATE)) {
        context->bit_rate = codec[IFormatCodec::TAG_BITRATE].GetInt64();
    }
    if (isVariable && codec.ChildExists(IFormatCodec::TAG_QUALITY)) {
        SetQuality(*context, codec[IFormatCodec::TAG_QUALITY].GetInt64());
    }
    const Core::Property& options = codec[IFormatCodec::TAG_CODEC_OPTIONS_ENCODE];
    if (options.ChildExists(IFormatCodec::TAG_PROFILE)) {
        const std::string& profile = options[IFormatCodec::TAG_PROFILE].GetString();
        if (av_opt_set(context.get(), "profile", profile.c_str(), 0) < 0) return nullptr;
    }
    if (avcodec_open2(context.get(), encoder, nullptr) < 0) return nullptr;
    return context;
}

void FillWithNoise(AVFrame& frame, std::minstd_rand& random) {
    const auto format = static_cast<AVSampleFormat>(frame.format);
    const bool isPlanar = av_sample_fmt_is_planar(format) != 0;
    const int planes = isPlanar ? frame.ch_layout.nb_channels : 1;
    const int samples = frame.nb_samples * (isPlanar ? 1 : frame.ch_layout.nb_channels);
    std::uniform_real_distribution<float> amplitude(-0.5F, 0.5F);
    for (int plane = 0; plane < planes; ++plane) {
        uint8_t* data = frame.extended_data[plane];
        for (int i = 0; i < samples; ++i) {
            const float value = amplitude(random);
            switch (av_get_packed_sample_fmt(format)) {
                case AV_SAMPLE_FMT_U8:
                    data[i] = static_cast<uint8_t>(128.0F + value * 127.0F);
                    break;
                case AV_SAMPLE_FMT_S16:
                    reinterpret_cast<int16_t*>(data)[i] = static_cast<int16_t>(value * 32767.0F);
                    break;
                case AV_SAMPLE_FMT_S32:
                    reinterpret_cast<int32_t*>(data)[i] = static_cast<int32_t>(value * 2147483000.0F);
                    break;
                default:
                    reinterpret_cast<float*>(data)[i] = value;
            }
        }
    }
}

/// Decodes packets until it is known what they hold.
class Reader {
public:
    Reader(const AVCodecContext& encoder, Encoded& encoded)
        : encoded_(encoded), decoder_(Ffmpeg::OpenDecoder(encoder)) {}

    void Read(const AVPacket& packet) {
        if (decoder_ == nullptr || encoded_.sampleRate != 0) return;
        if (avcodec_send_packet(decoder_.get(), &packet) < 0) return;
        const Frame frame(av_frame_alloc());
        if (avcodec_receive_frame(decoder_.get(), frame.get()) < 0) return;
        encoded_.sampleRate = frame->sample_rate;
        encoded_.layout = LayoutName(frame->ch_layout);
    }

private:
    Encoded& encoded_;
    Context decoder_;
};

}  // namespace

bool Opens(const std::string& encoderName, const Core::Property& codec) { return Open(encoderName, codec) != nullptr; }

std::optional<Encoded> Encode(const std::string& encoderName, const Core::Property& codec) {
    const Context context = Open(encoderName, codec);
    if (context == nullptr) return std::nullopt;
    Encoded encoded;
    encoded.openedBitrate = context->bit_rate;
    Reader reader(*context, encoded);

    constexpr int kUsualFrame = 1024;
    constexpr int kLeastFrames = 16;
    const int frameSize = context->frame_size > 0 ? context->frame_size : kUsualFrame;
    const int frames = std::max(context->sample_rate / 2 / frameSize, kLeastFrames);
    std::minstd_rand random;  // NOLINT(cert-msc51-cpp): the same noise every time
    const Packet packet(av_packet_alloc());
    int64_t bytes = 0;
    int64_t samples = 0;
    for (int i = 0; i <= frames; ++i) {
        const Frame frame(i < frames ? av_frame_alloc() : nullptr);  // none at the end: the rest is wanted
        if (frame != nullptr) {
            frame->nb_samples = frameSize;
            frame->format = context->sample_fmt;
            frame->sample_rate = context->sample_rate;
            frame->pts = static_cast<int64_t>(i) * frameSize;
            av_channel_layout_copy(&frame->ch_layout, &context->ch_layout);
            if (av_frame_get_buffer(frame.get(), 0) < 0) return std::nullopt;
            FillWithNoise(*frame, random);
        }
        if (avcodec_send_frame(context.get(), frame.get()) < 0) return std::nullopt;
        while (avcodec_receive_packet(context.get(), packet.get()) >= 0) {
            bytes += packet->size;
            samples += packet->duration;
            reader.Read(*packet);
            av_packet_unref(packet.get());
        }
    }
    encoded.bitrate = static_cast<double>(bytes) * 8.0 * context->sample_rate / static_cast<double>(samples);
    return encoded;
}

}  // namespace Kestro::Conf
