#include "VideoEncoder.h"

extern "C" {
#include <libavutil/opt.h>
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <vector>

#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/FFWrapper/EncoderCapabilities.h"

#include "tests/Ffmpeg.h"

namespace Kestro::Conf {
namespace {

using Core::Property;
using Ffmpeg::Context;
using Ffmpeg::Frame;
using Ffmpeg::Packet;

/// What a profile is to FFmpeg.
struct Profile {
    const std::string& name;
    int number;
    AVPixelFormat pixels = AV_PIX_FMT_YUV420P;
    const char* option = nullptr;  ///< the encoder's word, where it is not the name
};
const Profile kProfiles[] = {
    {IFormatCodecVideo::TAG_X264_PROFILE_BASELINE, FF_PROFILE_H264_CONSTRAINED_BASELINE},
    {IFormatCodecVideo::TAG_X264_PROFILE_MAIN, FF_PROFILE_H264_MAIN},
    {IFormatCodecVideo::TAG_X264_PROFILE_HIGH, FF_PROFILE_H264_HIGH},
    {IFormatCodecVideo::TAG_X264_PROFILE_HIGH10, FF_PROFILE_H264_HIGH_10, AV_PIX_FMT_YUV420P10LE},
    {IFormatCodecVideo::TAG_X264_PROFILE_HIGH422, FF_PROFILE_H264_HIGH_422, AV_PIX_FMT_YUV422P},
    {IFormatCodecVideo::TAG_X264_PROFILE_HIGH444, FF_PROFILE_H264_HIGH_444_PREDICTIVE, AV_PIX_FMT_YUV444P},
    {IFormatCodecVideo::TAG_X265_PROFILE_MAIN, FF_PROFILE_HEVC_MAIN, AV_PIX_FMT_YUV420P, "main"},
    {IFormatCodecVideo::TAG_MPEG4_PROFILE_SIMPLE, FF_PROFILE_MPEG4_SIMPLE},
    {IFormatCodecVideo::TAG_MPEG4_PROFILE_ADVANCED_SIMPLE, FF_PROFILE_MPEG4_ADVANCED_SIMPLE},
    {IFormatCodecVideo::TAG_MPEG4_PROFILE_CORE_SCALABLE, FF_PROFILE_MPEG4_CORE_SCALABLE},
    {IFormatCodecVideo::TAG_MPEG4_PROFILE_MAIN, FF_PROFILE_MPEG4_MAIN},
};

/// Null when the codec has no profile.
const Profile* ProfileOf(const Property& codec) {
    const Property& options = codec[IFormatCodec::TAG_CODEC_OPTIONS_ENCODE];
    if (!options.ChildExists(IFormatCodec::TAG_PROFILE)) return nullptr;
    const std::string& name = options[IFormatCodec::TAG_PROFILE].GetString();
    return std::ranges::find_if(kProfiles, [&](const Profile& profile) { return profile.name == name; });
}

/// The two ends of an encoder's scale of quality. Without an option: quantisers.
struct QualityScale {
    const char* encoder;
    const char* option;
    double worst;
    double best;
    int64_t bitrate = 0;
};
constexpr QualityScale kScales[] = {
    {"libx264", "crf", 51, 1},
    {"libx265", "crf", 51, 1},
    {"libvpx", "crf", 63, 4, IFormatCodecVideo::MAX_VIDEO_BITRATE},  // this one wants a bitrate too
    {"libvpx-vp9", "crf", 63, 4},
    {"libaom-av1", "crf", 63, 4},
    {"libsvtav1", "crf", 63, 4},
    {"libtheora", nullptr, 0, 10},
};
constexpr QualityScale kQuantisers{nullptr, nullptr, 31, 2};

void SetQuality(AVCodecContext& context, int64_t quality) {
    const auto* found = std::ranges::find(kScales, std::string(context.codec->name), &QualityScale::encoder);
    const QualityScale& scale = found != std::end(kScales) ? *found : kQuantisers;
    const double part = static_cast<double>(quality - 1) / static_cast<double>(IFormatCodec::MAX_QUALITY - 1);
    const double value = scale.worst + part * (scale.best - scale.worst);
    context.bit_rate = scale.bitrate;
    if (scale.option != nullptr) {
        av_opt_set_double(context.priv_data, scale.option, value, 0);
    } else {
        context.flags |= AV_CODEC_FLAG_QSCALE;
        context.global_quality = static_cast<int>(FF_QP2LAMBDA * value);
    }
}

bool IsByQuality(const Property& codec) {
    return codec[IFormatCodec::TAG_BITRATE_MODE].GetString() == IFormatCodec::TAG_BITRATE_MODE_VBR &&
           !codec[IFormatCodec::TAG_CODEC_OPTIONS_ENCODE].ChildExists(IFormatCodecVideo::TAG_APPROVED_VBR_MODE_ONLY);
}

void SetRate(AVCodecContext& context, const Property& codec) {
    if (IsByQuality(codec)) {
        SetQuality(context, codec[IFormatCodec::TAG_QUALITY].GetInt64());
    } else if (codec.ChildExists(IFormatCodec::TAG_BITRATE)) {
        context.bit_rate = codec[IFormatCodec::TAG_BITRATE].GetInt64();
        if (codec[IFormatCodec::TAG_BITRATE_MODE].GetString() == IFormatCodec::TAG_BITRATE_MODE_VBR) return;
        // It takes a peak at the mean for a mode that it has without delay alone, and then refuses.
        if (context.codec->name == std::string("libsvtav1")) return;
        context.rc_max_rate = context.bit_rate;
        context.rc_buffer_size = static_cast<int>(2 * context.bit_rate);
    }
}

/// The profile's, or the encoder's nearest to 4:2:0, of full range where it tells the two apart.
AVPixelFormat PixelFormat(const std::string& encoderName, const Property& codec) {
    if (encoderName == "dvvideo") {
        const int64_t height = codec[IFormatCodecVideo::TAG_HEIGHT].GetInt64();
        return height == 480 ? AV_PIX_FMT_YUV411P : height == 576 ? AV_PIX_FMT_YUV420P : AV_PIX_FMT_YUV422P;
    }
    if (const Profile* profile = ProfileOf(codec)) return profile->pixels;
    const auto capabilities = FFWrapper::EncoderCapabilities::Find(encoderName);
    std::vector<AVPixelFormat> formats;
    for (const std::string& name : capabilities->pixelFormats) formats.push_back(av_get_pix_fmt(name.c_str()));
    if (formats.empty()) return AV_PIX_FMT_YUV420P;
    formats.push_back(AV_PIX_FMT_NONE);
    return avcodec_find_best_pix_fmt_of_list(formats.data(), AV_PIX_FMT_YUVJ420P, 0, nullptr);
}

bool SetOptions(AVCodecContext& context, const Property& codec) {
    const Property& options = codec[IFormatCodec::TAG_CODEC_OPTIONS_ENCODE];
    const auto set = [&](const char* name, const std::string& value) {
        return av_opt_set(&context, name, value.c_str(), AV_OPT_SEARCH_CHILDREN) >= 0;
    };
    const auto copy = [&](const char* name, const std::string& tag) {
        return !options.ChildExists(tag) || set(name, options[tag].GetString());
    };
    if (context.codec->name == std::string("libsvtav1") && !set("preset", "10")) return false;
    if (const Profile* profile = ProfileOf(codec)) {
        if (!set("profile", profile->option != nullptr ? profile->option : profile->name)) return false;
    }
    return copy("preset", IFormatCodec::TAG_PRESET) && copy("tune", IFormatCodecVideo::TAG_X264_TUNE);
}

/// One of two passes; `flag` is 0 where there is but one.
struct Pass {
    int flag = 0;
    std::string statistics;
};

/// Null when it does not open.
Context Open(const std::string& encoderName, const Property& codec, const Pass& pass) {
    const AVCodec* encoder = avcodec_find_encoder_by_name(encoderName.c_str());
    Context context(avcodec_alloc_context3(encoder));
    context->width = static_cast<int>(codec[IFormatCodecVideo::TAG_WIDTH].GetInt64());
    context->height = static_cast<int>(codec[IFormatCodecVideo::TAG_HEIGHT].GetInt64());
    const auto rate = codec[IFormatCodecVideo::TAG_FPS].GetRatio();
    context->framerate = {static_cast<int>(rate.numerator()), static_cast<int>(rate.denominator())};
    context->time_base = av_inv_q(context->framerate);
    context->pix_fmt = PixelFormat(encoderName, codec);
    context->thread_count = 1;
    if (codec.ChildExists(IFormatCodecVideo::TAG_MAX_I_FRAME_INTERVAL)) {
        context->gop_size = static_cast<int>(codec[IFormatCodecVideo::TAG_MAX_I_FRAME_INTERVAL].GetInt64());
    }
    if (codec.ChildExists(IFormatCodecVideo::TAG_MAX_B_FRAME_SEQUENCE)) {
        context->max_b_frames = static_cast<int>(codec[IFormatCodecVideo::TAG_MAX_B_FRAME_SEQUENCE].GetInt64());
    }
    if (codec.ChildExists(IFormatCodec::TAG_GLOBAL_HEADER)) context->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    SetRate(*context, codec);
    if (!SetOptions(*context, codec)) return nullptr;
    if (pass.flag != 0) {
        context->flags |= pass.flag;
        if (av_opt_set(context->priv_data, "stats", pass.statistics.c_str(), 0) < 0) return nullptr;
    }
    if (avcodec_open2(context.get(), encoder, nullptr) < 0) return nullptr;
    return context;
}

/// Rings around the corner that run outwards: every detail from coarse to fine, and no noise.
void Paint(AVFrame& frame, int time) {
    const int depth = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format))->comp[0].depth;
    const int isWide = depth > 8 ? 1 : 0;
    for (int plane = 0; plane < AV_NUM_DATA_POINTERS && frame.buf[plane] != nullptr; ++plane) {
        uint8_t* data = frame.data[plane];
        const uint8_t* end = frame.buf[plane]->data + frame.buf[plane]->size;
        for (int y = 0; end - data >= frame.linesize[plane]; ++y) {
            for (int i = 0; i < frame.linesize[plane]; ++i) {
                const int x = i >> isWide;
                const int value = ((x * x + y * y) / 64 + 8 * time) % 256 << (isWide * (depth - 8));
                *data++ = static_cast<uint8_t>(value >> (8 * (i & isWide)));
            }
        }
    }
}

/// Null at the end. False when the encoder does not take it.
bool Send(AVCodecContext& context, const AVFrame* frame, std::vector<Packet>& packets) {
    if (avcodec_send_frame(&context, frame) < 0) return false;
    Packet packet(av_packet_alloc());
    while (avcodec_receive_packet(&context, packet.get()) >= 0) {
        packets.push_back(std::move(packet));
        packet.reset(av_packet_alloc());
    }
    return true;
}

/// What the decoder reads in packets, the null packet at their end.
void Decode(AVCodecContext& decoder, const std::vector<Packet>& packets, EncodedVideo& encoded) {
    const Frame frame(av_frame_alloc());
    int64_t run = 0;
    int64_t longestRun = 0;
    for (const Packet& packet : packets) {
        avcodec_send_packet(&decoder, packet.get());
        while (avcodec_receive_frame(&decoder, frame.get()) >= 0) {
            ++encoded.decoded;
            run = frame->pict_type == AV_PICTURE_TYPE_B ? run + 1 : 0;
            longestRun = std::max(longestRun, run);
        }
    }
    Property& settings = encoded.settings;
    settings.SetChild(IFormatCodecVideo::TAG_WIDTH, decoder.width);
    settings.SetChild(IFormatCodecVideo::TAG_HEIGHT, decoder.height);
    settings.SetChild(IFormatCodecVideo::TAG_MAX_B_FRAME_SEQUENCE, longestRun);
    const auto* profile = std::ranges::find(kProfiles, decoder.profile, &Profile::number);
    if (profile != std::end(kProfiles)) settings.SetChild(IFormatCodec::TAG_PROFILE, profile->name);
    const AVRational rate = decoder.framerate;
    if (rate.num != 0) settings.SetChild(IFormatCodecVideo::TAG_FPS, boost::rational<int64_t>(rate.num, rate.den));
}

std::optional<EncodedVideo> Encode(const std::string& encoderName, const Property& codec, const Pass& pass) {
    const Context context = Open(encoderName, codec, pass);
    if (context == nullptr) return std::nullopt;
    EncodedVideo encoded;
    encoded.settings.SetChild(IFormatCodecVideo::TAG_MAX_I_FRAME_INTERVAL, context->gop_size);
    if (!IsByQuality(codec)) encoded.settings.SetChild(IFormatCodec::TAG_BITRATE, context->bit_rate);

    constexpr int kBigPicture = 500'000;
    encoded.sent = context->width * context->height > kBigPicture ? 4 : 8;
    std::vector<Packet> packets;
    for (int i = 0; i < encoded.sent; ++i) {
        const Frame frame(av_frame_alloc());
        frame->width = context->width;
        frame->height = context->height;
        frame->format = context->pix_fmt;
        frame->quality = context->global_quality;
        frame->pts = i;
        if (av_frame_get_buffer(frame.get(), 0) < 0) return std::nullopt;
        Paint(*frame, i);
        if (!Send(*context, frame.get(), packets)) return std::nullopt;
    }
    if (!Send(*context, nullptr, packets)) return std::nullopt;
    if (packets.empty()) return encoded;
    for (const Packet& packet : packets) encoded.bytes += packet->size;

    // Animated PNG knows its header with the first packet.
    size_t size = 0;
    const uint8_t* header = av_packet_get_side_data(packets.front().get(), AV_PKT_DATA_NEW_EXTRADATA, &size);
    if (header != nullptr) {
        context->extradata = static_cast<uint8_t*>(av_mallocz(size + AV_INPUT_BUFFER_PADDING_SIZE));
        context->extradata_size = static_cast<int>(size);
        std::copy_n(header, size, context->extradata);
    }
    packets.emplace_back();
    if (const Context decoder = Ffmpeg::OpenDecoder(*context)) Decode(*decoder, packets, encoded);
    return encoded;
}

}  // namespace

std::optional<EncodedVideo> EncodeVideo(const std::string& encoderName, const Property& codec) {
    const std::string& tag = IFormatCodec::TAG_MULTIPASS_ENCODING;
    if (!codec.ChildExists(tag) || codec[tag].GetString() == IFormatCodec::TAG_ONE_PASS_MODE) {
        return Encode(encoderName, codec, {});
    }
    std::string folder = std::filesystem::temp_directory_path() / "conformance-test-XXXXXX";
    if (mkdtemp(folder.data()) == nullptr) return std::nullopt;
    const std::string statistics = folder + "/pass";
    auto encoded = Encode(encoderName, codec, {AV_CODEC_FLAG_PASS1, statistics});
    if (encoded) encoded = Encode(encoderName, codec, {AV_CODEC_FLAG_PASS2, statistics});
    std::filesystem::remove_all(folder);
    return encoded;
}

}  // namespace Kestro::Conf
