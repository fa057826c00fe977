#include "Kestro/Planner/OpenInput.h"

extern "C" {
#include <libavutil/dict.h>
}

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>

#include "Kestro/FFWrapper/CodecIDFromTextID.h"
#include "Kestro/FFWrapper/Demuxers.h"
#include "Kestro/Planner/FrameRateRange.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Text.h"

namespace Kestro::Planner {
namespace {

constexpr const char* kOnlyFiles = "file";

/// A dictionary of options for FFmpeg, which takes out those that it knows; freed with the rest.
class Options {
public:
    Options() { av_dict_set(&dictionary_, "protocol_whitelist", kOnlyFiles, 0); }
    ~Options() { av_dict_free(&dictionary_); }
    Options(const Options&) = delete;
    Options& operator=(const Options&) = delete;
    AVDictionary** Get() { return &dictionary_; }

private:
    AVDictionary* dictionary_ = nullptr;
};

std::string ErrorText(int error) {
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(error, text, sizeof text);
    return text;
}

/// A name that tells the demuxers how the file's name ends, and no more.
std::string PlainName(const std::string& path) {
    const std::string name = path.substr(path.rfind('/') + 1);
    const std::size_t dot = name.rfind('.');
    if (dot == std::string::npos) return "input";
    const auto isPlain = [](char c) { return (c >= '0' && c <= '9') || ((c | 0x20) >= 'a' && (c | 0x20) <= 'z'); };
    return std::all_of(name.begin() + static_cast<std::ptrdiff_t>(dot) + 1, name.end(), isPlain)
               ? "input" + name.substr(dot)
               : "input";
}

}  // namespace

int OpenInput::OpenOnlyInput(AVFormatContext* context, AVIOContext** file, const char* url, int flags,
                             AVDictionary** options) {
    // A demuxer that opens contexts of its own hands on this function, but not always `opaque`.
    auto* input = static_cast<OpenInput*>(context->opaque);
    if (input == nullptr) return AVERROR(EPERM);
    if (input->IsInput(url) && (flags & AVIO_FLAG_WRITE) == 0) {
        return input->openFile_(context, file, url, flags, options);
    }
    // A demuxer that only looks for companion files is told that there are none.
    const std::string_view name = url;
    const char* path = name.starts_with("file:") ? url + 5 : url;
    if (name.find("://") == std::string_view::npos && access(path, F_OK) != 0) return AVERROR(ENOENT);
    input->refused_ = url;
    return AVERROR(EPERM);
}

bool OpenInput::IsInput(const char* url) const { return pattern_ ? pattern_->Has(url) : url == url_; }

int OpenInput::IsLate(void* input) {
    // A playlist may have FFmpeg wait for what never comes.
    constexpr std::chrono::seconds kPatience{20};
    return std::chrono::steady_clock::now() - static_cast<OpenInput*>(input)->begun_ > kPatience ? 1 : 0;
}

void OpenInput::ThrowUnreadable(const std::string& reason) const {
    throw NotAcceptable(
        {.code = ProblemCode::UnreadableInput, .message = "Cannot read " + Printable(name_) + ": " + reason + "."});
}

void OpenInput::ThrowOpensOthers(const std::string& what) const {
    throw NotAcceptable({.code = ProblemCode::OpensOtherFiles,
                         .message = Printable(name_) + " is not read: it leads to other files" + what + "."});
}

void OpenInput::ThrowOf(int error) const {
    if (!refused_.empty()) ThrowOpensOthers(", such as " + Printable(refused_));
    if (error == AVERROR_EOF) ThrowUnreadable("there is nothing in it");
    if (error == AVERROR_INVALIDDATA) ThrowUnreadable("it is no media file that FFmpeg knows");
    if (error < 0) ThrowUnreadable(ErrorText(error));
}

const AVInputFormat* OpenInput::FindDemuxer() const {
    Options options;
    AVIOContext* file = nullptr;
    ThrowOf(avio_open2(&file, url_.c_str(), AVIO_FLAG_READ, nullptr, options.Get()));
    const AVInputFormat* demuxer = nullptr;
    const int score = av_probe_input_buffer2(file, &demuxer, PlainName(path_).c_str(), nullptr, 0, 0);
    avio_closep(&file);
    ThrowOf(score);
    return demuxer;
}

void OpenInput::CheckFile(const std::string& path) const {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        const bool mayBePattern = errno == ENOENT && path.find('%') != std::string::npos;
        ThrowUnreadable(
            std::strerror(errno) +
            std::string(mayBePattern ? "; of a sequence of pictures, tell how many are shown a second" : ""));
    }
    if (S_ISDIR(status.st_mode)) ThrowUnreadable("it is a directory");
    // It is read twice: to look at it and to convert it.
    if (!S_ISREG(status.st_mode)) ThrowUnreadable("it is no regular file");
    if (access(path.c_str(), R_OK) != 0) ThrowUnreadable(std::strerror(errno));
}

void OpenInput::FindPictures(const std::string& path, const ProbeOptions& options) {
    pattern_.emplace(path);
    const boost::rational<int64_t>& fps = *options.picturesPerSecond;
    if (!(fps > boost::rational<int64_t>(0)) || !IsFrameRate(fps)) {
        ThrowUnreadable("no film has " + RatioText(fps) + " frames/s, but " + FrameRateRange());
    }
    sequence_ = pattern_->Find(fps);
    url_ = pattern_->Url();
}

OpenInput::OpenInput(const std::string& path, const ProbeOptions& options)
    : name_(options.name.empty() ? path : options.name), path_(path), url_(FileUrl(path)) {
    if (options.picturesPerSecond) {
        FindPictures(path, options);
    } else {
        CheckFile(path);
    }

    const bool isPicture = sequence_ || !options.picture.empty();
    const AVInputFormat* demuxer = isPicture ? av_find_input_format("image2") : FindDemuxer();
    if (!options.followReferences && demuxer != nullptr && FFWrapper::OpensOtherFiles(demuxer->name)) {
        ThrowOpensOthers(std::string(" (") + demuxer->name + ")");
    }
    AVFormatContext* context = avformat_alloc_context();
    if (context == nullptr) ThrowOf(AVERROR(ENOMEM));
    if (!options.picture.empty()) context->video_codec_id = FFWrapper::CodecIDFromTextID(options.picture);
    if (options.followReferences) {
        context->interrupt_callback = {IsLate, this};
    } else {
        openFile_ = context->io_open;
        context->io_open = OpenOnlyInput;
        context->opaque = this;
    }
    Options chosen;
    av_dict_set(chosen.Get(), "pattern_type", sequence_ ? "sequence" : "none", 0);
    if (sequence_) {
        av_dict_set(chosen.Get(), "framerate", RatioText(sequence_->fps).c_str(), 0);
        av_dict_set_int(chosen.Get(), "start_number", sequence_->first, 0);
    }
    ThrowOf(avformat_open_input(&context, url_.c_str(), demuxer, chosen.Get()));
    context_.reset(context);
    // A live playlist never ends, and so would its conversion.
    if (options.followReferences && (context->ctx_flags & AVFMTCTX_UNSEEKABLE) != 0) {
        ThrowUnreadable("it is a live playlist, without an end");
    }
}

AVFormatContext& OpenInput::ReadHeaders() {
    const int found = avformat_find_stream_info(context_.get(), nullptr);
    // Streams with nothing in them are streams.
    if (found != AVERROR_EOF) ThrowOf(found);
    return *context_;
}

}  // namespace Kestro::Planner
