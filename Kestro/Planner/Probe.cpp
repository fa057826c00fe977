#include "Kestro/Planner/Probe.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libavutil/dict.h>
#include <libavutil/display.h>
#include <libavutil/samplefmt.h>
}

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <cstring>
#include <memory>

#include "Kestro/Conf/LayoutRecord.h"
#include "Kestro/FFWrapper/CodecIDFromTextID.h"
#include "Kestro/FFWrapper/MuxerNames.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Text.h"

namespace Kestro::Planner {
namespace {

using Kestro::Conf::LayoutRecord;
using Kestro::Conf::StreamType;

struct CloseInput {
    void operator()(AVFormatContext* context) const { avformat_close_input(&context); }
};
using Input = std::unique_ptr<AVFormatContext, CloseInput>;

[[noreturn]] void ThrowUnreadable(const std::string& path, const std::string& reason) {
    throw NotAcceptable(
        {.code = ProblemCode::UnreadableInput, .message = "Cannot read " + Printable(path) + ": " + reason + "."});
}

std::string ErrorText(int error) {
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(error, text, sizeof text);
    return text;
}

boost::rational<int64_t> Ratio(AVRational value) {
    return value.num > 0 && value.den > 0 ? boost::rational<int64_t>(value.num, value.den) : 0;
}

/// Degrees by which the picture is turned before it is shown, or 0.
double Rotation(const AVStream& stream) {
#if LIBAVCODEC_VERSION_INT >= AV_VERSION_INT(60, 31, 102)
    const AVPacketSideData* data = av_packet_side_data_get(
        stream.codecpar->coded_side_data, stream.codecpar->nb_coded_side_data, AV_PKT_DATA_DISPLAYMATRIX);
    const uint8_t* bytes = data != nullptr && data->size >= 9 * sizeof(int32_t) ? data->data : nullptr;
#else
    std::size_t size = 0;
    const uint8_t* bytes = av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, &size);
    if (size < 9 * sizeof(int32_t)) bytes = nullptr;
#endif
    if (bytes == nullptr) return 0.0;
    int32_t matrix[9];
    std::memcpy(matrix, bytes, sizeof matrix);
    const double degrees = av_display_rotation_get(matrix);
    return std::isnan(degrees) ? 0.0 : degrees;
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
    const auto quarterTurns = std::llround(Rotation(stream) / 90.0);
    if (quarterTurns % 2 != 0) {
        std::swap(info.width, info.height);
        info.sampleAspectRatio = boost::rational<int64_t>(1) / info.sampleAspectRatio;
    }
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
    const char* format = av_get_sample_fmt_name(static_cast<AVSampleFormat>(codec.format));
    if (format != nullptr) info.sampleFormat = format;
}

}  // namespace

std::string FileUrl(const std::string& path) { return "file:" + path; }

MediaInfo Probe(const std::string& path, const std::string& picture) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) ThrowUnreadable(path, std::strerror(errno));
    if (S_ISDIR(status.st_mode)) ThrowUnreadable(path, "it is a directory");
    // It is read twice: to look at it and to convert it.
    if (!S_ISREG(status.st_mode)) ThrowUnreadable(path, "it is no regular file");
    if (access(path.c_str(), R_OK) != 0) ThrowUnreadable(path, std::strerror(errno));

    AVDictionary* options = nullptr;
    av_dict_set(&options, "pattern_type", "none", 0);
    AVFormatContext* opened = avformat_alloc_context();
    const AVInputFormat* demuxer = nullptr;
    if (opened != nullptr && !picture.empty()) {
        opened->video_codec_id = Kestro::FFWrapper::CodecIDFromTextID(picture);
        demuxer = av_find_input_format("image2");
    }
    const int error = avformat_open_input(&opened, FileUrl(path).c_str(), demuxer, &options);
    av_dict_free(&options);
    if (error < 0) {
        ThrowUnreadable(path,
                        error == AVERROR_INVALIDDATA ? "it is no media file that FFmpeg knows" : ErrorText(error));
    }
    const Input context(opened);
    if (const int found = avformat_find_stream_info(context.get(), nullptr); found < 0) {
        ThrowUnreadable(path, ErrorText(found));
    }

    MediaInfo info;
    info.path = path;
    info.demuxer = context->iformat->name;
    if (context->duration > 0) info.duration = static_cast<double>(context->duration) / AV_TIME_BASE;
    for (unsigned i = 0; i < context->nb_streams; ++i) {
        AVStream& stream = *context->streams[i];
        MediaStream& described = info.streams.emplace_back();
        described.index = static_cast<int>(i);
        described.codec = avcodec_get_name(stream.codecpar->codec_id);
        switch (stream.codecpar->codec_type) {
            case AVMEDIA_TYPE_VIDEO:
                ReadVideo(*context, stream, described);
                break;
            case AVMEDIA_TYPE_AUDIO:
                ReadAudio(stream, described);
                break;
            case AVMEDIA_TYPE_SUBTITLE:
                described.type = StreamType::Subtitle;
                break;
            default:
                break;
        }
    }
    return info;
}

}  // namespace Kestro::Planner
