#include "Kestro/Planner/Probe.h"

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/dict.h>
}

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <memory>

#include "Kestro/FFWrapper/CodecIDFromTextID.h"
#include "Kestro/FFWrapper/MuxerNames.h"
#include "Kestro/Planner/DescribeStream.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Text.h"

namespace Kestro::Planner {
namespace {

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
    info.chapters = static_cast<int>(context->nb_chapters);
    for (unsigned i = 0; i < context->nb_streams; ++i) {
        info.streams.push_back(DescribeStream(*context, *context->streams[i]));
    }
    LookAtFrames(*context, info.streams);
    return info;
}

}  // namespace Kestro::Planner
