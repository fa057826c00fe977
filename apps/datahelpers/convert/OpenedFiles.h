#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace App {

/// The names of files that FFmpeg opened for reading, as it says itself; each once.
class OpenedFiles {
public:
    /// A line of FFmpeg's; most have nothing to tell.
    void Read(std::string_view line);
    void Add(const OpenedFiles& others);
    /// Leaves out the one that needs no telling.
    std::vector<std::string> Beside(const std::string& input) const;

    /// Takes the words of FFmpeg's libraries in this program while that runs.
    static OpenedFiles While(const std::function<void()>& reading);

private:
    void Add(const std::string& name);

    std::vector<std::string> names_;
};

}  // namespace App
