#pragma once

#include <deque>
#include <string>
#include <string_view>

#include "convert/OpenedFiles.h"

namespace App {

/// What ffmpeg and the libraries in it write to standard error, sorted; printable.
class Messages {
public:
    /// temporary: the file that is written; messages name the output in its place.
    Messages(std::string temporary, std::string output)
        : temporary_(std::move(temporary)), output_(std::move(output)) {}

    /// One line.
    void Read(std::string_view line);

    /// Whatever was said last; tells most when all has failed.
    const std::deque<std::string>& Last() const { return last_; }
    /// What ffmpeg called an error.
    const std::deque<std::string>& Errors() const { return errors_; }
    const OpenedFiles& Opened() const { return opened_; }
    /// Some versions end well although the last part of the file could not be written; they say so.
    bool OutputFailed() const { return outputFailed_; }

private:
    std::string temporary_;
    std::string output_;
    std::deque<std::string> last_;
    std::deque<std::string> errors_;
    OpenedFiles opened_;
    bool outputFailed_ = false;
};

}  // namespace App
