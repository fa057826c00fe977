#include "convert/OpenedFiles.h"

extern "C" {
#include <libavutil/log.h>
}

#include <algorithm>
#include <cstdarg>
#include <mutex>
#include <utility>

namespace App {
namespace {

// FFmpeg has one listener for all of its threads, and passes it nothing of ours.
std::mutex listening;
OpenedFiles* listener = nullptr;

void Listen(void* speaker, int level, const char* format, va_list arguments) {
    char line[4096];
    int withSpeaker = 1;
    const int length = av_log_format_line2(speaker, level, format, arguments, line, sizeof line, &withSpeaker);
    if (length <= 0) return;
    const std::lock_guard lock(listening);
    if (listener != nullptr) listener->Read(line);
}

}  // namespace

void OpenedFiles::Read(std::string_view line) {
    // The second are those of a demuxer that opens files in its own way.
    static constexpr std::pair<std::string_view, std::string_view> kWords[] = {{"Opening '", "' for reading"},
                                                                               {"DASH request for url '", "', offset"}};
    for (const auto& [before, behind] : kWords) {
        const std::size_t at = line.find(before);
        const std::size_t end = line.rfind(behind);
        if (at == std::string_view::npos || end == std::string_view::npos || at + before.size() > end) continue;
        std::string_view name = line.substr(at + before.size(), end - at - before.size());
        for (const std::string_view prefix : {"file://", "file:"}) {
            if (name.starts_with(prefix)) name.remove_prefix(prefix.size());
        }
        Add(std::string(name));
    }
}

void OpenedFiles::Add(const std::string& name) {
    if (std::ranges::find(names_, name) == names_.end()) names_.push_back(name);
}

void OpenedFiles::Add(const OpenedFiles& others) {
    for (const std::string& name : others.names_) Add(name);
}

std::vector<std::string> OpenedFiles::Beside(const std::string& input) const {
    std::vector<std::string> names = names_;
    std::erase(names, input);
    return names;
}

OpenedFiles OpenedFiles::While(const std::function<void()>& reading) {
    OpenedFiles opened;
    struct Listening {
        explicit Listening(OpenedFiles& files) {
            Set(&files);
            av_log_set_callback(Listen);
        }
        ~Listening() {
            av_log_set_callback(av_log_default_callback);
            Set(nullptr);
        }
        static void Set(OpenedFiles* files) {
            const std::lock_guard lock(listening);
            listener = files;
        }
    } const whileReading(opened);
    reading();
    return opened;
}

}  // namespace App
