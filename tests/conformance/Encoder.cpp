#include "Encoder.h"

extern "C" {
#include <libavutil/opt.h>
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <random>
#include <vector>

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/LayoutRecord.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/FFWrapper/EncoderCapabilities.h"
#include "Kestro/FFWrapper/EncoderRecord.h"

#include "tools/muxers/Ffmpeg.h"

namespace Kestro::Conf {
namespace {

using Core::Property;
using Context = Measure::Ffmpeg::Encoder;
using Measure::Ffmpeg::Frame;
using Measure::Ffmpeg::Packet;
using Measure::Ffmpeg::Parameters;

/// FFmpeg's own decoder for what an opened encoder writes; null when it does not open.
Context OpenDecoder(const AVCodecContext& encoder) {
    const Parameters parameters(avcodec_parameters_alloc());
    avcodec_parameters_from_context(parameters.get(), &encoder);
    Context decoder(avcodec_alloc_context3(avcodec_find_decoder(encoder.codec_id)));
    avcodec_parameters_to_context(decoder.get(), parameters.get());
    if (avcodec_open2(decoder.get(), nullptr, nullptr) < 0) return nullptr;
    return decoder;
}

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

/// Null where the codec has none.
const Property* OptionOf(const Property& codec, const std::string& tag) {
    return codec.FindByPath(IFormatCodec::TAG_CODEC_OPTIONS_ENCODE + Property::SEPARATOR + tag);
}
const Profile* ProfileOf(const Property& codec) {
    const Property* name = OptionOf(codec, IFormatCodec::TAG_PROFILE);
    const auto* row = std::ranges::find_if(
        kProfiles, [&](const Profile& profile) { return name != nullptr && profile.name == name->GetString(); });
    return row != std::end(kProfiles) ? row : nullptr;
}

bool IsVariable(const Property& codec) {
    return codec[IFormatCodec::TAG_BITRATE_MODE].GetString() == IFormatCodec::TAG_BITRATE_MODE_VBR;
}
bool IsByQuality(const Property& codec) {
    return IsVariable(codec) && codec.ChildExists(IFormatCodec::TAG_QUALITY) &&
           OptionOf(codec, IFormatCodecVideo::TAG_APPROVED_VBR_MODE_ONLY) == nullptr;
}

bool Set(AVCodecContext& context, const char* name, const std::string& value) {
    return av_opt_set(&context, name, value.c_str(), AV_OPT_SEARCH_CHILDREN) >= 0;
}

void SetBitrate(AVCodecContext& context, const Property& codec) {
    std::vector<std::pair<std::string, std::string>> quality;
    const FFWrapper::EncoderRecord* record = FFWrapper::EncoderRecord::Find(context.codec->name);
    if (record != nullptr && IsByQuality(codec))
        quality = record->QualityOptions(codec[IFormatCodec::TAG_QUALITY].GetInt64());
    if (!quality.empty()) context.bit_rate = 0;
    for (const auto& [name, value] : quality) {
        if (name != "q") {
            Set(context, name.c_str(), value);
            continue;
        }
        context.flags |= AV_CODEC_FLAG_QSCALE;
        context.global_quality = static_cast<int>(FF_QP2LAMBDA * std::stod(value));
    }
    if (!quality.empty() || !codec.ChildExists(IFormatCodec::TAG_BITRATE)) return;
    context.bit_rate = codec[IFormatCodec::TAG_BITRATE].GetInt64();
    if (context.codec->type == AVMEDIA_TYPE_AUDIO || IsVariable(codec)) return;
    // It takes a peak at the mean for a mode that it has without delay alone, and then refuses.
    if (context.codec->name == std::string("libsvtav1")) return;
    context.rc_max_rate = context.bit_rate;
    context.rc_buffer_size = static_cast<int>(2 * context.bit_rate);
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

void SetSource(AVCodecContext& context, const Property& codec) {
    if (context.codec->type == AVMEDIA_TYPE_AUDIO) {
        context.sample_rate = static_cast<int>(codec[IFormatCodecAudio::TAG_SAMPLE_RATE].GetInt64());
        context.time_base = {1, context.sample_rate};
        context.sample_fmt = av_get_sample_fmt(codec[IFormatCodecAudio::TAG_SAMPLE_FORMAT].GetString().c_str());
        const LayoutRecord* layout = LayoutRecord::Find(codec[IFormatCodecAudio::TAG_LAYOUT].GetString());
        av_channel_layout_from_mask(&context.ch_layout, layout->ffmpegMask);
        return;
    }
    context.width = static_cast<int>(codec[IFormatCodecVideo::TAG_WIDTH].GetInt64());
    context.height = static_cast<int>(codec[IFormatCodecVideo::TAG_HEIGHT].GetInt64());
    const auto rate = codec[IFormatCodecVideo::TAG_FPS].GetRatio();
    context.framerate = {static_cast<int>(rate.numerator()), static_cast<int>(rate.denominator())};
    context.time_base = av_inv_q(context.framerate);
    context.pix_fmt = PixelFormat(context.codec->name, codec);
}

bool SetOptions(AVCodecContext& context, const Property& codec) {
    const auto copy = [&](const char* name, const Property* value) {
        return value == nullptr || Set(context, name, Core::PropertyValueToString(*value));
    };
    if (context.codec->name == std::string("libsvtav1") && !Set(context, "preset", "10")) return false;
    const Profile* profile = ProfileOf(codec);
    const bool hasOwnWord = profile != nullptr && profile->option != nullptr;
    if (!(hasOwnWord ? Set(context, "profile", profile->option)
                     : copy("profile", OptionOf(codec, IFormatCodec::TAG_PROFILE)))) {
        return false;
    }
    return copy("preset", OptionOf(codec, IFormatCodec::TAG_PRESET)) &&
           copy("tune", OptionOf(codec, IFormatCodecVideo::TAG_X264_TUNE)) &&
           copy("g", codec.FindByPath(IFormatCodecVideo::TAG_MAX_I_FRAME_INTERVAL)) &&
           copy("bf", codec.FindByPath(IFormatCodecVideo::TAG_MAX_B_FRAME_SEQUENCE));
}

/// One of two passes; `flag` is 0 where there is but one.
struct Pass {
    int flag = 0;
    std::string statistics;
};

/// Null when it does not open.
Context Open(const std::string& encoderName, const Property& codec, const Pass& pass = {}) {
    const AVCodec* encoder = avcodec_find_encoder_by_name(encoderName.c_str());
    Context context(avcodec_alloc_context3(encoder));
    context->thread_count = 1;
    context->strict_std_compliance = FF_COMPLIANCE_EXPERIMENTAL;
    if (codec.ChildExists(IFormatCodec::TAG_GLOBAL_HEADER)) context->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    SetSource(*context, codec);
    SetBitrate(*context, codec);
    if (!SetOptions(*context, codec)) return nullptr;
    context->flags |= pass.flag;
    if (pass.flag != 0 && !Set(*context, "stats", pass.statistics)) return nullptr;
    if (avcodec_open2(context.get(), encoder, nullptr) < 0) return nullptr;
    return context;
}

void FillWithNoise(AVFrame& frame, std::minstd_rand& random) {
    const auto format = static_cast<AVSampleFormat>(frame.format);
    const bool isPlanar = av_sample_fmt_is_planar(format) != 0;
    const int planes = isPlanar ? frame.ch_layout.nb_channels : 1;
    const int samples = frame.nb_samples * (isPlanar ? 1 : frame.ch_layout.nb_channels);
    std::uniform_real_distribution<double> amplitude(-0.5, 0.5);
    const auto fill = [&](auto* data, double middle, double reach) {
        using Sample = std::remove_pointer_t<decltype(data)>;
        std::generate_n(data, samples, [&] { return static_cast<Sample>(middle + reach * amplitude(random)); });
    };
    for (int plane = 0; plane < planes; ++plane) {
        uint8_t* data = frame.extended_data[plane];
        switch (av_get_packed_sample_fmt(format)) {
            case AV_SAMPLE_FMT_U8:
                fill(data, 128, 127);
                break;
            case AV_SAMPLE_FMT_S16:
                fill(reinterpret_cast<int16_t*>(data), 0, 32767);
                break;
            case AV_SAMPLE_FMT_S32:
                fill(reinterpret_cast<int32_t*>(data), 0, 2147483000);
                break;
            default:
                fill(reinterpret_cast<float*>(data), 0, 1);
        }
    }
}

/// Rings around the corner that run outwards: every detail from coarse to fine, and no noise.
void Paint(AVFrame& frame) {
    const int depth = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format))->comp[0].depth;
    const int isWide = depth > 8 ? 1 : 0;
    for (int plane = 0; plane < AV_NUM_DATA_POINTERS && frame.buf[plane] != nullptr; ++plane) {
        uint8_t* data = frame.data[plane];
        const uint8_t* end = frame.buf[plane]->data + frame.buf[plane]->size;
        for (int y = 0; end - data >= frame.linesize[plane]; ++y) {
            for (int i = 0; i < frame.linesize[plane]; ++i) {
                const int x = i >> isWide;
                const int rings = (x * x + y * y) / 64 + 8 * static_cast<int>(frame.pts);
                *data++ = static_cast<uint8_t>((rings % 256 << (isWide * (depth - 8))) >> (8 * (i & isWide)));
            }
        }
    }
}

/// The packets of a short clip; nothing when the encoder does not take it to the end.
std::optional<std::vector<Packet>> EncodeClip(AVCodecContext& context, int& sent) {
    constexpr int kUsualFrame = 1024;
    constexpr int kBigPicture = 500'000;
    const bool isAudio = context.codec->type == AVMEDIA_TYPE_AUDIO;
    const int frameSize = context.frame_size > 0 ? context.frame_size : kUsualFrame;
    sent = context.width * context.height > kBigPicture ? 4 : 8;
    if (isAudio) sent = std::max(context.sample_rate / 2 / frameSize, 16);
    std::minstd_rand random;  // NOLINT(cert-msc51-cpp): the same noise every time
    std::vector<Packet> packets;
    for (int i = 0; i <= sent; ++i) {
        const Frame frame(i < sent ? av_frame_alloc() : nullptr);  // none at the end: the rest is wanted
        if (frame != nullptr) {
            frame->format = isAudio ? static_cast<int>(context.sample_fmt) : static_cast<int>(context.pix_fmt);
            frame->width = context.width;
            frame->height = context.height;
            frame->nb_samples = isAudio ? frameSize : 0;
            frame->sample_rate = context.sample_rate;
            av_channel_layout_copy(&frame->ch_layout, &context.ch_layout);
            frame->quality = context.global_quality;
            frame->pts = isAudio ? static_cast<int64_t>(i) * frameSize : i;
            if (av_frame_get_buffer(frame.get(), 0) < 0) return std::nullopt;
            isAudio ? FillWithNoise(*frame, random) : Paint(*frame);
        }
        if (avcodec_send_frame(&context, frame.get()) < 0) return std::nullopt;
        for (Packet packet(av_packet_alloc()); avcodec_receive_packet(&context, packet.get()) >= 0;) {
            packets.push_back(std::move(packet));
            packet.reset(av_packet_alloc());
        }
    }
    return packets;
}

/// What the decoder reads in packets, the null packet at their end.
void Decode(AVCodecContext& decoder, const std::vector<Packet>& packets, Encoded& encoded) {
    int run = 0;
    int longestRun = 0;
    const Frame frame(av_frame_alloc());
    for (const Packet& packet : packets) {
        avcodec_send_packet(&decoder, packet.get());
        while (avcodec_receive_frame(&decoder, frame.get()) >= 0) {
            ++encoded.decoded;
            run = frame->pict_type == AV_PICTURE_TYPE_B ? run + 1 : 0;
            longestRun = std::max(longestRun, run);
        }
    }
    Property& settings = encoded.settings;
    if (decoder.codec_type == AVMEDIA_TYPE_AUDIO) {
        char layout[64] = {};
        av_channel_layout_describe(&decoder.ch_layout, layout, sizeof layout);
        settings.SetChild(IFormatCodecAudio::TAG_SAMPLE_RATE, decoder.sample_rate);
        settings.SetChild(IFormatCodecAudio::TAG_LAYOUT, layout);
        return;
    }
    settings.SetChild(IFormatCodecVideo::TAG_WIDTH, decoder.width);
    settings.SetChild(IFormatCodecVideo::TAG_HEIGHT, decoder.height);
    settings.SetChild(IFormatCodecVideo::TAG_MAX_B_FRAME_SEQUENCE, longestRun);
    const auto* profile = std::ranges::find(kProfiles, decoder.profile, &Profile::number);
    if (profile != std::end(kProfiles)) settings.SetChild(IFormatCodec::TAG_PROFILE, profile->name);
    const AVRational rate = decoder.framerate;
    if (rate.num != 0) settings.SetChild(IFormatCodecVideo::TAG_FPS, boost::rational<int64_t>(rate.num, rate.den));
}

std::optional<Encoded> Encode(const std::string& encoderName, const Property& codec, const Pass& pass) {
    const Context context = Open(encoderName, codec, pass);
    if (context == nullptr) return std::nullopt;
    Encoded encoded;
    if (context->codec->type == AVMEDIA_TYPE_VIDEO) {
        encoded.settings.SetChild(IFormatCodecVideo::TAG_MAX_I_FRAME_INTERVAL, context->gop_size);
    }
    if (!IsByQuality(codec)) encoded.settings.SetChild(IFormatCodec::TAG_BITRATE, context->bit_rate);
    std::optional<std::vector<Packet>> packets = EncodeClip(*context, encoded.sent);
    if (!packets || packets->empty()) return packets ? std::optional(encoded) : std::nullopt;
    int64_t duration = 0;
    for (const Packet& packet : *packets) {
        encoded.bytes += packet->size;
        duration += packet->duration;
    }
    encoded.bitrate =
        static_cast<double>(encoded.bytes * 8) / (static_cast<double>(duration) * av_q2d(context->time_base));

    // Animated PNG knows its header with the first packet.
    size_t size = 0;
    const uint8_t* header = av_packet_get_side_data(packets->front().get(), AV_PKT_DATA_NEW_EXTRADATA, &size);
    if (header != nullptr) {
        context->extradata = static_cast<uint8_t*>(av_mallocz(size + AV_INPUT_BUFFER_PADDING_SIZE));
        context->extradata_size = static_cast<int>(size);
        std::copy_n(header, size, context->extradata);
    }
    packets->emplace_back();
    if (const Context decoder = OpenDecoder(*context)) Decode(*decoder, *packets, encoded);
    return encoded;
}

}  // namespace

bool Opens(const std::string& encoderName, const Property& codec) { return Open(encoderName, codec) != nullptr; }

std::optional<Encoded> Encode(const std::string& encoderName, const Property& codec) {
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
