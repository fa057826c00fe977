#include "Kestro/Planner/DescribeStream.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libavutil/dict.h>
#include <libavutil/display.h>
#include <libavutil/mastering_display_metadata.h>
#include <libavutil/pixdesc.h>
#include <libavutil/samplefmt.h>
}

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>
#include <memory>
#include <utility>

#include "Kestro/Conf/LayoutRecord.h"

namespace Kestro::Planner {
namespace {

using Conf::LayoutRecord;
using Conf::StreamType;

boost::rational<int64_t> Ratio(AVRational value) {
    return value.num > 0 && value.den > 0 ? boost::rational<int64_t>(value.num, value.den) : 0;
}

/// Side data of the stream as the structure that it is; null where it has none.
template <class Data>
const Data* SideData(const AVStream& stream, AVPacketSideDataType type) {
#if LIBAVCODEC_VERSION_INT >= AV_VERSION_INT(60, 31, 102)
    const AVPacketSideData* data =
        av_packet_side_data_get(stream.codecpar->coded_side_data, stream.codecpar->nb_coded_side_data, type);
    const uint8_t* bytes = data != nullptr && data->size >= sizeof(Data) ? data->data : nullptr;
#else
    std::size_t size = 0;
    const uint8_t* bytes = av_stream_get_side_data(&stream, type, &size);
    if (size < sizeof(Data)) bytes = nullptr;
#endif
    return reinterpret_cast<const Data*>(bytes);
}

/// Degrees by which the picture is turned before it is shown, or 0.
double Rotation(const AVStream& stream) {
    using Matrix = int32_t[9];
    const auto* data = SideData<Matrix>(stream, AV_PKT_DATA_DISPLAYMATRIX);
    if (data == nullptr) return 0.0;
    Matrix matrix;
    std::memcpy(matrix, data, sizeof matrix);
    const double degrees = av_display_rotation_get(matrix);
    return std::isnan(degrees) ? 0.0 : degrees;
}

/// FFmpeg's name, or empty for what the file does not tell.
std::string Told(const char* name) {
    const std::string text = name != nullptr ? name : "";
    return text == "unknown" || text == "unspecified" || text == "reserved" ? std::string() : text;
}

int64_t InUnits(AVRational value, int64_t units) {
    return value.den > 0 ? std::llround(av_q2d(value) * static_cast<double>(units)) : 0;
}

void ReadMastering(const AVMasteringDisplayMetadata* display, const AVContentLightMetadata* light, MediaStream& info) {
    if (display == nullptr || display->has_primaries == 0 || display->has_luminance == 0) return;
    constexpr int64_t kChromaticity = 50'000;
    constexpr int64_t kLuminance = 10'000;
    MasteringDisplay& mastering = info.mastering.emplace();
    std::size_t place = 0;
    for (const int primary : {1, 2, 0}) {  // FFmpeg begins with red
        for (const AVRational& part : display->display_primaries[primary]) {
            mastering.chromaticities[place++] = InUnits(part, kChromaticity);
        }
    }
    for (const AVRational& part : display->white_point) {
        mastering.chromaticities[place++] = InUnits(part, kChromaticity);
    }
    mastering.maxLuminance = InUnits(display->max_luminance, kLuminance);
    mastering.minLuminance = InUnits(display->min_luminance, kLuminance);
    if (light == nullptr) return;
    mastering.maxContentLight = light->MaxCLL;
    mastering.maxAverageLight = light->MaxFALL;
}

void ReadPixels(const AVCodecParameters& codec, MediaStream& info) {
    const AVPixFmtDescriptor* pixels = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(codec.format));
    if (pixels != nullptr) {
        info.bitDepth = pixels->comp[0].depth;
        info.hasAlpha = (pixels->flags & AV_PIX_FMT_FLAG_ALPHA) != 0;
    }
    info.colour = {.primaries = Told(av_color_primaries_name(codec.color_primaries)),
                   .transfer = Told(av_color_transfer_name(codec.color_trc)),
                   .matrix = Told(av_color_space_name(codec.color_space)),
                   .range = Told(av_color_range_name(codec.color_range))};
}

std::string Metadata(const AVStream& stream, const char* key) {
    const AVDictionaryEntry* entry = av_dict_get(stream.metadata, key, nullptr, 0);
    return entry != nullptr ? entry->value : "";
}

void ReadVideo(AVFormatContext& context, AVStream& stream, MediaStream& info) {
    const AVCodecParameters& codec = *stream.codecpar;
    info.type = StreamType::Video;
    info.width = codec.width;
    info.height = codec.height;
    const auto aspect = Ratio(av_guess_sample_aspect_ratio(&context, &stream, nullptr));
    if (aspect > boost::rational<int64_t>(0)) info.sampleAspectRatio = aspect;
    info.isCover = (stream.disposition & AV_DISPOSITION_ATTACHED_PIC) != 0;
    if (!info.isCover) info.fps = Ratio(av_guess_frame_rate(&context, &stream, nullptr));
    const double degrees = Rotation(stream);
    info.rotation = std::llround(degrees);
    const auto quarterTurns = std::llround(degrees / 90.0);
    if (quarterTurns % 2 != 0) {
        std::swap(info.width, info.height);
        info.sampleAspectRatio = boost::rational<int64_t>(1) / info.sampleAspectRatio;
    }
    ReadPixels(codec, info);
    // WebM keeps the transparency of VP8 and VP9 beside the picture.
    if (Metadata(stream, "alpha_mode") == "1") info.hasAlpha = true;
    info.isInterlaced = codec.field_order > AV_FIELD_PROGRESSIVE;
    info.isBottomFieldFirst = codec.field_order == AV_FIELD_BB || codec.field_order == AV_FIELD_TB;
    ReadMastering(SideData<AVMasteringDisplayMetadata>(stream, AV_PKT_DATA_MASTERING_DISPLAY_METADATA),
                  SideData<AVContentLightMetadata>(stream, AV_PKT_DATA_CONTENT_LIGHT_LEVEL), info);
}

/// FFmpeg's name of the layout; where the file gives a number of channels alone, of the usual layout for it.
std::string LayoutName(const AVChannelLayout& layout) {
    if (layout.order != AV_CHANNEL_ORDER_UNSPEC) {
        char name[128] = {};
        if (av_channel_layout_describe(&layout, name, sizeof name) > 0) return name;
    }
    const LayoutRecord* usual = LayoutRecord::Find(layout.nb_channels);
    return usual != nullptr ? usual->name : std::to_string(layout.nb_channels) + " channels";
}

void ReadAudio(const AVStream& stream, MediaStream& info) {
    const AVCodecParameters& codec = *stream.codecpar;
    info.type = StreamType::Audio;
    info.sampleRate = codec.sample_rate;
    info.layout = LayoutName(codec.ch_layout);
    info.bitDepth = codec.bits_per_raw_sample;
    const char* format = av_get_sample_fmt_name(static_cast<AVSampleFormat>(codec.format));
    if (format != nullptr) info.sampleFormat = format;
}

struct FreeDecoder {
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
using Decoder = std::unique_ptr<AVCodecContext, FreeDecoder>;
using Frame = std::unique_ptr<AVFrame, FreeDecoder>;
using Packet = std::unique_ptr<AVPacket, FreeDecoder>;

Decoder OpenDecoder(const AVStream& stream) {
    const AVCodec* codec = avcodec_find_decoder(stream.codecpar->codec_id);
    Decoder decoder(codec != nullptr ? avcodec_alloc_context3(codec) : nullptr);
    if (decoder == nullptr || avcodec_parameters_to_context(decoder.get(), stream.codecpar) < 0 ||
        avcodec_open2(decoder.get(), codec, nullptr) < 0) {
        return nullptr;
    }
    return decoder;
}

bool IsInterlaced(const AVFrame& frame) {
#ifdef AV_FRAME_FLAG_INTERLACED
    return (frame.flags & AV_FRAME_FLAG_INTERLACED) != 0;
#else
    return frame.interlaced_frame != 0;
#endif
}

bool IsTopFieldFirst(const AVFrame& frame) {
#ifdef AV_FRAME_FLAG_TOP_FIELD_FIRST
    return (frame.flags & AV_FRAME_FLAG_TOP_FIELD_FIRST) != 0;
#else
    return frame.top_field_first != 0;
#endif
}

template <class Data>
const Data* SideData(const AVFrame& frame, AVFrameSideDataType type) {
    const AVFrameSideData* data = av_frame_get_side_data(&frame, type);
    return data != nullptr ? reinterpret_cast<const Data*>(data->data) : nullptr;
}

/// What a decoded frame tells beyond the headers.
void ReadFrame(const AVFrame& frame, MediaStream& info) {
    if (IsInterlaced(frame)) {
        info.isInterlaced = true;
        info.isBottomFieldFirst = !IsTopFieldFirst(frame);
    }
    if (info.mastering) return;
    ReadMastering(SideData<AVMasteringDisplayMetadata>(frame, AV_FRAME_DATA_MASTERING_DISPLAY_METADATA),
                  SideData<AVContentLightMetadata>(frame, AV_FRAME_DATA_CONTENT_LIGHT_LEVEL), info);
}

/// Whether the headers of a video stream leave open what its frames tell.
bool IsOpen(const AVStream& stream, const MediaStream& info) {
    if (info.type != StreamType::Video || info.isCover || !IsUsable(info)) return false;
    // Frames of few lines were never sent as fields, and these codecs have none.
    constexpr int64_t kFewestLines = 240;
    constexpr AVCodecID kWithoutFields[] = {AV_CODEC_ID_VP8, AV_CODEC_ID_VP9, AV_CODEC_ID_AV1,  AV_CODEC_ID_THEORA,
                                            AV_CODEC_ID_GIF, AV_CODEC_ID_PNG, AV_CODEC_ID_APNG, AV_CODEC_ID_FLV1};
    const bool fieldsAreOpen = stream.codecpar->field_order == AV_FIELD_UNKNOWN && info.height >= kFewestLines &&
                               std::ranges::find(kWithoutFields, stream.codecpar->codec_id) == std::end(kWithoutFields);
    return fieldsAreOpen || (info.colour.IsHdr() && !info.mastering);
}

}  // namespace

MediaStream DescribeStream(AVFormatContext& context, AVStream& stream) {
    MediaStream info{.index = stream.index, .type = {}, .codec = avcodec_get_name(stream.codecpar->codec_id)};
    info.codecTag = stream.codecpar->codec_tag;
    if (stream.duration > 0) info.duration = static_cast<double>(stream.duration) * av_q2d(stream.time_base);
    info.language = Metadata(stream, "language");
    info.title = Metadata(stream, "title");
    info.isDefault = (stream.disposition & AV_DISPOSITION_DEFAULT) != 0;
    info.isForced = (stream.disposition & AV_DISPOSITION_FORCED) != 0;
    switch (stream.codecpar->codec_type) {
        case AVMEDIA_TYPE_VIDEO:
            ReadVideo(context, stream, info);
            break;
        case AVMEDIA_TYPE_AUDIO:
            ReadAudio(stream, info);
            break;
        case AVMEDIA_TYPE_SUBTITLE:
            info.type = StreamType::Subtitle;
            break;
        case AVMEDIA_TYPE_ATTACHMENT:
            info.isAttachment = true;
            if (info.title.empty()) info.title = Metadata(stream, "filename");
            break;
        default:
            break;
    }
    return info;
}

bool LookAtFrames(AVFormatContext& context, std::vector<MediaStream>& streams) {
    // One video stream, and enough of it for a picture that is coded as two fields.
    constexpr int kFrames = 4;
    constexpr int kPackets = 200;
    std::size_t index = 0;
    while (index < streams.size() && !IsOpen(*context.streams[index], streams[index])) ++index;
    const Decoder decoder = index < streams.size() ? OpenDecoder(*context.streams[index]) : nullptr;
    const Packet packet(av_packet_alloc());
    const Frame frame(av_frame_alloc());
    int packets = 0;
    int frames = 0;
    while (packets < (decoder != nullptr ? kPackets : 1) && frames < kFrames &&
           av_read_frame(&context, packet.get()) >= 0) {
        ++packets;
        const bool isOurs = decoder != nullptr && packet->stream_index == static_cast<int>(index);
        if (isOurs && avcodec_send_packet(decoder.get(), packet.get()) >= 0) {
            for (; avcodec_receive_frame(decoder.get(), frame.get()) >= 0; ++frames) ReadFrame(*frame, streams[index]);
        }
        av_packet_unref(packet.get());
    }
    return packets > 0;
}

}  // namespace Kestro::Planner
