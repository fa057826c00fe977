#pragma once

extern "C" {
#include <libavformat/avformat.h>
}

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "Kestro/Planner/PicturePattern.h"
#include "Kestro/Planner/Probe.h"

namespace Kestro::Planner {

/// A media file that is open for reading, by a demuxer that its content asks for. Unless references are followed,
/// nothing but this file is opened.
class OpenInput {
public:
    /// Throws NotAcceptable as Probe.
    OpenInput(const std::string& path, const ProbeOptions& options);
    OpenInput(const OpenInput&) = delete;
    OpenInput& operator=(const OpenInput&) = delete;

    /// What there is to know of its streams. Throws NotAcceptable as Probe.
    AVFormatContext& ReadHeaders();

    /// Nothing where it is one file.
    const std::optional<PictureSequence>& Sequence() const { return sequence_; }

private:
    struct Close {
        void operator()(AVFormatContext* context) const { avformat_close_input(&context); }
    };
    using Opening = int (*)(AVFormatContext*, AVIOContext**, const char*, int, AVDictionary**);

    static int OpenOnlyInput(AVFormatContext* context, AVIOContext** file, const char* url, int flags,
                             AVDictionary** options);
    static int IsLate(void* input);
    void CheckFile(const std::string& path) const;
    void FindPictures(const std::string& path, const ProbeOptions& options);
    bool IsInput(const char* url) const;
    [[noreturn]] void ThrowUnreadable(const std::string& reason) const;
    [[noreturn]] void ThrowOpensOthers(const std::string& what) const;
    /// For what FFmpeg answers.
    void ThrowOf(int error) const;
    /// By content and the ending of the name, whatever pattern the name may look like.
    const AVInputFormat* FindDemuxer() const;

    std::chrono::steady_clock::time_point begun_ = std::chrono::steady_clock::now();
    std::string name_;
    std::string path_;
    std::string url_;
    std::optional<PicturePattern> pattern_;  ///< of a sequence
    std::optional<PictureSequence> sequence_;
    Opening openFile_ = nullptr;
    std::string refused_;  ///< what the demuxer asked for beside the file
    std::unique_ptr<AVFormatContext, Close> context_;
};

}  // namespace Kestro::Planner
