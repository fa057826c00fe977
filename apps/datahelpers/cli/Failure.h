#pragma once

#include <exception>
#include <string>
#include <utility>
#include <vector>

namespace App {

/// How the program ends. A signal ends it with 128 and its number, as shells have it.
enum class ExitStatus : int {
    Done = 0,
    ConversionFailed = 1,  ///< ffmpeg failed, or the disk is full
    WrongUsage = 2,        ///< wrong options, or an input that cannot be read
    NotAcceptable = 3,     ///< a preset or setting that cannot be used
};

/// What went wrong, in the parts that the text and the JSON report show. Parts that do not apply are empty.
struct Complaint {
    std::string message;               ///< one sentence
    std::string path;                  ///< the setting that it is about
    std::string value;                 ///< the value that was refused
    std::vector<std::string> allowed;  ///< what would be accepted
    std::string wayOut;                ///< what the user can do
};

/// Ends the command; main reports it.
class Failure : public std::exception {
public:
    Failure(ExitStatus status, Complaint complaint) : status_(status), complaint_(std::move(complaint)) {}
    Failure(ExitStatus status, std::string message) : Failure(status, Complaint{.message = std::move(message)}) {}

    ExitStatus Status() const noexcept { return status_; }
    const Complaint& Said() const noexcept { return complaint_; }
    const char* what() const noexcept override { return complaint_.message.c_str(); }

private:
    ExitStatus status_;
    Complaint complaint_;
};

}  // namespace App
