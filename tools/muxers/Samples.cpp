#include "tools/muxers/Samples.h"

extern "C" {
#include <libavcodec/codec_desc.h>
#include <libavutil/imgutils.h>
#include <libavutil/mem.h>
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <cstring>
#include <optional>

#include "Kestro/FFWrapper/CodecIDFromTextID.h"
#include "Kestro/FFWrapper/EncoderNameFromCodecId.h"
#include "Kestro/FFWrapper/SupportedValues.h"

namespace Measure {
namespace {

constexpr int kFrames = 8;
constexpr int kFrameSize = 1024;

void SetExtradata(AVCodecParameters& parameters, const void* data, std::size_t size) {
    parameters.extradata = static_cast<uint8_t*>(av_mallocz(size + AV_INPUT_BUFFER_PADDING_SIZE));
    std::memcpy(parameters.extradata, data, size);
    parameters.extradata_size = static_cast<int>(size);
}

void AddPacket(Sample& sample, const std::string& data, int64_t pts, int64_t duration) {
    Ffmpeg::Packet packet(av_packet_alloc());
    av_new_packet(packet.get(), static_cast<int>(data.size()));
    std::memcpy(packet->data, data.data(), data.size());
    packet->pts = packet->dts = pts;
    packet->duration = duration;
    packet->flags |= AV_PKT_FLAG_KEY;
    sample.packets.push_back(std::move(packet));
}

/// Sends frames and takes packets; the packets' times count in the encoder's time base.
void Encode(AVCodecContext& encoder, const AVFrame* frame, Sample& sample) {
    if (avcodec_send_frame(&encoder, frame) < 0) return;
    for (;;) {
        Ffmpeg::Packet packet(av_packet_alloc());
        if (avcodec_receive_packet(&encoder, packet.get()) < 0) return;
        if (packet->duration == 0) packet->duration = 1;
        sample.packets.push_back(std::move(packet));
    }
}

AVPixelFormat NearestFormat(const AVCodec& encoder) {
    const bool isFull = encoder.id == AV_CODEC_ID_MJPEG;
    const AVPixelFormat wanted = isFull ? AV_PIX_FMT_YUVJ420P : AV_PIX_FMT_YUV420P;
    const auto formats = Kestro::FFWrapper::PixelFormats(encoder);
    // The list ends with AV_PIX_FMT_NONE, as FFmpeg's function wants it.
    return formats.empty() ? wanted : avcodec_find_best_pix_fmt_of_list(formats.data(), wanted, 0, nullptr);
}

bool EncodeVideo(const AVCodec& codec, const SampleKind& kind, Sample& sample) {
    const Ffmpeg::Encoder encoder(avcodec_alloc_context3(&codec));
    const bool isDv = codec.id == AV_CODEC_ID_DVVIDEO;
    encoder->width = isDv ? 720 : 352;
    encoder->height = isDv ? 576 : 288;
    encoder->pix_fmt = NearestFormat(codec);
    encoder->time_base = {1, 25};
    encoder->framerate = {25, 1};
    encoder->bit_rate = 1'000'000;
    encoder->gop_size = 4;
    encoder->strict_std_compliance = FF_COMPLIANCE_EXPERIMENTAL;
    if (kind.globalHeader) encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    if (avcodec_open2(encoder.get(), &codec, nullptr) < 0) return false;
    const Ffmpeg::Frame frame(av_frame_alloc());
    frame->width = encoder->width;
    frame->height = encoder->height;
    frame->format = encoder->pix_fmt;
    for (int i = 0; i < kFrames; ++i) {
        if (av_frame_get_buffer(frame.get(), 0) < 0) return false;
        for (int plane = 0; plane < 4 && frame->data[plane] != nullptr; ++plane) {
            const int lines = plane == 0 ? frame->height : AV_CEIL_RSHIFT(frame->height, 1);
            for (int y = 0; y < lines; ++y) {
                uint8_t* line = frame->data[plane] + static_cast<ptrdiff_t>(y) * frame->linesize[plane];
                std::fill_n(line, av_image_get_linesize(encoder->pix_fmt, frame->width, plane),
                            static_cast<uint8_t>((y / 16 + i) % 2 == 0 ? 60 : 190));
            }
        }
        frame->pts = i;
        Encode(*encoder, frame.get(), sample);
        av_frame_unref(frame.get());
        frame->width = encoder->width;
        frame->height = encoder->height;
        frame->format = encoder->pix_fmt;
    }
    Encode(*encoder, nullptr, sample);
    avcodec_parameters_from_context(sample.parameters.get(), encoder.get());
    sample.timeBase = encoder->time_base;
    return !sample.packets.empty();
}

bool EncodeAudio(const AVCodec& codec, const SampleKind& kind, Sample& sample) {
    const Ffmpeg::Encoder encoder(avcodec_alloc_context3(&codec));
    encoder->sample_rate = kind.sampleRate;
    encoder->sample_fmt = Kestro::FFWrapper::SampleFormats(codec).front();
    encoder->time_base = {1, encoder->sample_rate};
    const bool takesMuch = codec.id == AV_CODEC_ID_DTS || codec.id == AV_CODEC_ID_VORBIS || codec.id == AV_CODEC_ID_AC3;
    encoder->bit_rate = codec.id == AV_CODEC_ID_DTS ? 1'024'000 : takesMuch && kind.channels > 2 ? 320'000 : 64'000;
    encoder->strict_std_compliance = FF_COMPLIANCE_EXPERIMENTAL;
    av_channel_layout_default(&encoder->ch_layout, kind.channels);
    for (const AVChannelLayout& layout : Kestro::FFWrapper::Layouts(codec)) {
        if (layout.nb_channels != kind.channels) continue;
        av_channel_layout_copy(&encoder->ch_layout, &layout);
        break;
    }
    if (kind.globalHeader) encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    if (avcodec_open2(encoder.get(), &codec, nullptr) < 0) return false;
    const Ffmpeg::Frame frame(av_frame_alloc());
    for (int i = 0; i < kFrames; ++i) {
        frame->nb_samples = encoder->frame_size > 0 ? encoder->frame_size : kFrameSize;
        frame->format = encoder->sample_fmt;
        frame->sample_rate = encoder->sample_rate;
        av_channel_layout_copy(&frame->ch_layout, &encoder->ch_layout);
        if (av_frame_get_buffer(frame.get(), 0) < 0) return false;
        frame->pts = static_cast<int64_t>(i) * frame->nb_samples;
        av_samples_set_silence(frame->extended_data, 0, frame->nb_samples, kind.channels, encoder->sample_fmt);
        Encode(*encoder, frame.get(), sample);
        av_frame_unref(frame.get());
    }
    Encode(*encoder, nullptr, sample);
    avcodec_parameters_from_context(sample.parameters.get(), encoder.get());
    sample.timeBase = encoder->time_base;
    return !sample.packets.empty();
}

/// A picture of four colours, as the subtitles of discs and broadcasts are.
bool EncodeBitmapSubtitle(const AVCodec& codec, Sample& sample) {
    const Ffmpeg::Encoder encoder(avcodec_alloc_context3(&codec));
    encoder->width = 352;
    encoder->height = 288;
    encoder->time_base = {1, 1000};
    if (avcodec_open2(encoder.get(), &codec, nullptr) < 0) return false;
    uint32_t palette[256] = {0x00000000, 0xFFFFFFFF, 0xFF000000, 0xFF808080};
    uint8_t pixels[64 * 16];
    for (std::size_t i = 0; i < sizeof pixels; ++i) pixels[i] = static_cast<uint8_t>(i / 8 % 4);
    AVSubtitleRect rect{};
    rect.type = SUBTITLE_BITMAP;
    rect.x = rect.y = 16;
    rect.w = 64;
    rect.h = 16;
    rect.nb_colors = 4;
    rect.data[0] = pixels;
    rect.data[1] = reinterpret_cast<uint8_t*>(palette);
    rect.linesize[0] = rect.w;
    AVSubtitleRect* rects[] = {&rect};
    AVSubtitle subtitle{};
    subtitle.end_display_time = 1000;
    subtitle.num_rects = 1;
    subtitle.rects = rects;
    for (int64_t i = 0; i < 2; ++i) {
        uint8_t data[16384];
        subtitle.pts = i * 2 * AV_TIME_BASE;
        const int size = avcodec_encode_subtitle(encoder.get(), data, sizeof data, &subtitle);
        if (size <= 0) return false;
        AddPacket(sample, std::string(reinterpret_cast<char*>(data), static_cast<std::size_t>(size)), i * 2000, 1000);
    }
    avcodec_parameters_from_context(sample.parameters.get(), encoder.get());
    return true;
}

constexpr const char* kAssHeader =
    "[Script Info]\r\nScriptType: v4.00+\r\n\r\n[V4+ Styles]\r\nFormat: Name, Fontname, Fontsize, PrimaryColour, "
    "SecondaryColour, OutlineColour, BackColour, Bold, Italic, Underline, StrikeOut, ScaleX, ScaleY, Spacing, Angle, "
    "BorderStyle, Outline, Shadow, Alignment, MarginL, MarginR, MarginV, Encoding\r\nStyle: "
    "Default,Arial,16,&Hffffff,&Hffffff,&H0,&H0,0,0,0,0,100,100,0,0,1,1,0,2,10,10,10,0\r\n\r\n[Events]\r\nFormat: "
    "Layer, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, Text\r\n";

/// Text needs no encoder.
bool WriteText(AVCodecID id, Sample& sample) {
    std::string text = "Hello";
    if (id == AV_CODEC_ID_ASS) {
        SetExtradata(*sample.parameters, kAssHeader, std::strlen(kAssHeader));
    } else if (id == AV_CODEC_ID_MOV_TEXT) {
        text.insert(0, std::string("\0\5", 2));
        static constexpr uint8_t kBox[] = {0, 0,  0,   0,   1,   0xFF, 0, 0, 0, 0, 0,  0,    0,    0,    0,    0,  0,
                                           0, 0,  0,   0,   0,   0,    0, 0, 1, 0, 18, 0xFF, 0xFF, 0xFF, 0xFF, 0,  0,
                                           0, 18, 'f', 't', 'a', 'b',  0, 1, 0, 1, 5,  'A',  'r',  'i',  'a',  'l'};
        SetExtradata(*sample.parameters, kBox, sizeof kBox);
    } else if (id != AV_CODEC_ID_SUBRIP && id != AV_CODEC_ID_TEXT && id != AV_CODEC_ID_WEBVTT) {
        return false;
    }
    for (int64_t i = 0; i < 2; ++i) {
        const std::string line = id == AV_CODEC_ID_ASS ? std::to_string(i) + ",0,Default,,0,0,0,,Hello" : text;
        AddPacket(sample, line, i * 2000, 1000);
    }
    return true;
}

void Describe(AVCodecID id, AVMediaType type, Sample& sample) {
    AVCodecParameters& parameters = *sample.parameters;
    sample.isSynthetic = true;
    if (type == AVMEDIA_TYPE_AUDIO) {
        parameters.sample_rate = id == AV_CODEC_ID_AMR_NB ? 8000 : 44100;
        av_channel_layout_default(&parameters.ch_layout, 1);
        parameters.frame_size = 160;
        sample.timeBase = {1, parameters.sample_rate};
    } else if (type == AVMEDIA_TYPE_VIDEO) {
        parameters.width = 352;
        parameters.height = 288;
    }
    static constexpr uint8_t kNothing[16] = {};
    if (type == AVMEDIA_TYPE_VIDEO) SetExtradata(parameters, kNothing, sizeof kNothing);
    const int64_t step = type == AVMEDIA_TYPE_AUDIO ? 160 : 1;
    for (int i = 0; i < kFrames; ++i) AddPacket(sample, std::string(32, '\x3C'), i * step, step);
}

/// Nothing where the encoder does not make it.
std::optional<Sample> MakeSample(const std::string& codecId, const AVCodec* encoder, const SampleKind& kind) {
    const AVCodecDescriptor& descriptor = *avcodec_descriptor_get(Kestro::FFWrapper::CodecIDFromTextID(codecId));
    Sample sample{.codecId = codecId, .parameters = Ffmpeg::Parameters(avcodec_parameters_alloc())};
    sample.parameters->codec_type = descriptor.type;
    sample.parameters->codec_id = descriptor.id;
    if (descriptor.type == AVMEDIA_TYPE_SUBTITLE) {
        sample.timeBase = {1, 1000};
        sample.parameters->width = 352;
        sample.parameters->height = 288;
        if (WriteText(descriptor.id, sample)) return sample;
        if (encoder != nullptr && EncodeBitmapSubtitle(*encoder, sample)) return sample;
    }
    if (encoder == nullptr || descriptor.type == AVMEDIA_TYPE_SUBTITLE) {
        Describe(descriptor.id, descriptor.type, sample);
        return sample;
    }
    const bool isEncoded = descriptor.type == AVMEDIA_TYPE_VIDEO ? EncodeVideo(*encoder, kind, sample)
                                                                 : EncodeAudio(*encoder, kind, sample);
    if (!isEncoded) return std::nullopt;
    return sample;
}

}  // namespace

std::vector<Sample> MakeSamples(const std::string& codecId, const SampleKind& kind) {
    const std::string name = Kestro::FFWrapper::EncoderNameFromCodecId(codecId);
    const AVCodec* preferred = avcodec_find_encoder_by_name(name.c_str());
    const AVCodec* ffmpegs = avcodec_find_encoder(Kestro::FFWrapper::CodecIDFromTextID(codecId));
    std::vector<Sample> samples;
    for (const AVCodec* encoder : preferred == ffmpegs ? std::vector{preferred} : std::vector{preferred, ffmpegs}) {
        if (auto sample = MakeSample(codecId, encoder, kind)) samples.push_back(std::move(*sample));
    }
    return samples;
}

}  // namespace Measure
