#include "prove/Decode.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/log.h>
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <cstdarg>
#include <map>
#include <memory>
#include <mutex>

#include "Kestro/FFWrapper/CodecIDFromTextID.h"
#include "Kestro/Planner/Probe.h"
#include "Kestro/Planner/Text.h"

namespace App {
namespace {

std::mutex listening;
std::string heard;

/// Decoders hide what is damaged as well as they can, and say so.
void Listen(void* speaker, int level, const char* format, va_list arguments) {
    if (level > AV_LOG_ERROR) return;
    char line[1024];
    int withSpeaker = 1;
    av_log_format_line2(speaker, level, format, arguments, line, sizeof line, &withSpeaker);
    const std::lock_guard lock(listening);
    if (!heard.empty()) return;
    heard = line;
    while (heard.ends_with('\n')) heard.pop_back();
}

struct Closing {
    void operator()(AVFormatContext* context) const { avformat_close_input(&context); }
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};

template <class T>
using Owned = std::unique_ptr<T, Closing>;

std::string ErrorText(int error) {
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(error, text, sizeof text);
    return text;
}

/// One stream's decoder and what it gave.
class Decoder {
public:
    explicit Decoder(const AVStream& stream, Decoded& decoded) : decoded_(decoded) {
        const AVCodec* codec = avcodec_find_decoder(stream.codecpar->codec_id);
        if (codec == nullptr) {
            Fail("FFmpeg has no decoder for it");
            return;
        }
        context_.reset(avcodec_alloc_context3(codec));
        if (context_ == nullptr || avcodec_parameters_to_context(context_.get(), stream.codecpar) < 0) return;
        context_->thread_count = 1;
        context_->pkt_timebase = stream.time_base;
        const int error = avcodec_open2(context_.get(), codec, nullptr);
        if (error < 0) Fail(ErrorText(error));
    }

    /// packet: null at the end.
    void Take(AVPacket* packet, Decoded::Stream& stream) {
        if (context_ == nullptr || avcodec_is_open(context_.get()) == 0) return;
        if (stream.type == StreamType::Subtitle) return TakeSubtitle(packet, stream);
        int error = avcodec_send_packet(context_.get(), packet);
        if (error < 0 && error != AVERROR_EOF) Fail(ErrorText(error));
        while ((error = avcodec_receive_frame(context_.get(), frame_.get())) >= 0) Count(stream);
        if (error != AVERROR(EAGAIN) && error != AVERROR_EOF) Fail(ErrorText(error));
    }

private:
    void Fail(const std::string& why) {
        if (decoded_.error.empty()) decoded_.error = why;
    }
    void Count(Decoded::Stream& stream) const {
        if (stream.type == StreamType::Audio) {
            stream.count += frame_->nb_samples;
            stream.sampleRate = frame_->sample_rate;
            stream.channels = frame_->ch_layout.nb_channels;
        } else {
            ++stream.count;
            stream.width = frame_->width;
            stream.height = frame_->height;
            const auto* format = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame_->format));
            stream.hasMatrix = format != nullptr &&
                               (format->flags & (AV_PIX_FMT_FLAG_RGB | AV_PIX_FMT_FLAG_PAL)) == 0 &&
                               format->nb_components >= 3;
        }
    }
    void TakeSubtitle(AVPacket* packet, Decoded::Stream& stream) {
        if (packet == nullptr) return;
        AVSubtitle subtitle{};
        int isThere = 0;
        const int error = avcodec_decode_subtitle2(context_.get(), &subtitle, &isThere, packet);
        if (error < 0) Fail(ErrorText(error));
        if (isThere != 0 && subtitle.num_rects > 0) ++stream.count;
        avsubtitle_free(&subtitle);
    }

    Decoded& decoded_;
    Owned<AVCodecContext> context_;
    Owned<AVFrame> frame_{av_frame_alloc()};
};

StreamType TypeOf(const AVStream& stream) {
    if (stream.codecpar->codec_type == AVMEDIA_TYPE_AUDIO) return StreamType::Audio;
    return stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO ? StreamType::Video : StreamType::Subtitle;
}

void Decode(const std::string& path, const std::string& picture, Decoded& decoded) {
    const AVInputFormat* demuxer = picture.empty() ? nullptr : av_find_input_format("image2");
    AVFormatContext* opened = avformat_alloc_context();
    if (opened == nullptr) return;
    if (!picture.empty()) opened->video_codec_id = Kestro::FFWrapper::CodecIDFromTextID(picture);
    int error = avformat_open_input(&opened, Kestro::Planner::FileUrl(path).c_str(), demuxer, nullptr);
    const Owned<AVFormatContext> context(error < 0 ? nullptr : opened);
    if (error >= 0) error = avformat_find_stream_info(context.get(), nullptr);
    if (error < 0) {
        decoded.error = ErrorText(error);
        return;
    }
    std::map<int, std::pair<Decoder, std::size_t>> decoders;
    for (unsigned i = 0; i < context->nb_streams; ++i) {
        const AVStream& stream = *context->streams[i];
        const AVMediaType type = stream.codecpar->codec_type;
        if (type != AVMEDIA_TYPE_VIDEO && type != AVMEDIA_TYPE_AUDIO && type != AVMEDIA_TYPE_SUBTITLE) continue;
        decoders.try_emplace(stream.index, Decoder(stream, decoded), decoded.streams.size());
        decoded.streams.push_back({.type = TypeOf(stream)});
    }
    const Owned<AVPacket> packet(av_packet_alloc());
    while ((error = av_read_frame(context.get(), packet.get())) >= 0) {
        const auto decoder = decoders.find(packet->stream_index);
        if (decoder != decoders.end()) {
            decoder->second.first.Take(packet.get(), decoded.streams[decoder->second.second]);
        }
        av_packet_unref(packet.get());
    }
    if (error != AVERROR_EOF && decoded.error.empty()) decoded.error = ErrorText(error);
    for (auto& [index, decoder] : decoders) decoder.first.Take(nullptr, decoded.streams[decoder.second]);
}

}  // namespace

Decoded DecodeToEnd(const std::string& path, const std::string& picture) {
    const int level = av_log_get_level();
    heard.clear();
    av_log_set_callback(Listen);
    Decoded decoded;
    Decode(path, picture, decoded);
    av_log_set_callback(av_log_default_callback);
    av_log_set_level(level);
    const std::lock_guard lock(listening);
    if (decoded.error.empty()) decoded.error = Kestro::Planner::Printable(heard);
    return decoded;
}

}  // namespace App
