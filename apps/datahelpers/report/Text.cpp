#include "report/Text.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "Kestro/Planner/Text.h"

namespace App {
namespace {

std::vector<std::string> Words(std::string_view text) {
    std::vector<std::string> words;
    std::size_t begin = 0;
    while ((begin = text.find_first_not_of(' ', begin)) != std::string_view::npos) {
        const std::size_t end = std::min(text.find(' ', begin), text.size());
        words.emplace_back(text.substr(begin, end - begin));
        begin = end;
    }
    return words;
}

std::string ShellWord(const std::string& word) {
    const auto isPlain = [](char c) {
        return (c >= '0' && c <= '9') || ((c | 0x20) >= 'a' && (c | 0x20) <= 'z') ||
               std::strchr("_./:=,+@%-", c) != nullptr;
    };
    if (!word.empty() && std::ranges::all_of(word, isPlain)) return word;
    const bool isShown = Kestro::Planner::Printable(word) == word;
    std::string quoted = isShown ? "'" : "$'";
    for (const char c : word) {
        const auto byte = static_cast<unsigned char>(c);
        if (!isShown && (byte < 0x20 || byte >= 0x7f || c == '\\' || c == '\'')) {
            char escaped[5];
            std::snprintf(escaped, sizeof escaped, "\\x%02x", byte);
            quoted += escaped;
        } else {
            quoted += c == '\'' ? "'\\''" : std::string(1, c);
        }
    }
    return quoted + "'";
}

}  // namespace

std::string Wrapped(std::span<const std::string> words, std::size_t start, std::size_t indent, std::size_t width) {
    std::string text;
    std::size_t column = start;
    bool first = true;
    for (const std::string& word : words) {
        if (!first && column + 1 + word.size() > width) {
            text += '\n';
            text.append(indent, ' ');
            column = indent;
        } else if (!first) {
            text += ' ';
            ++column;
        }
        text += word;
        column += word.size();
        first = false;
    }
    return text;
}

std::string Wrapped(std::string_view text, std::size_t start, std::size_t indent, std::size_t width) {
    return Wrapped(Words(text), start, indent, width);
}

std::size_t TerminalWidth(int descriptor) {
    constexpr std::size_t kUsual = 80;
    constexpr std::size_t kLeast = 40;
    winsize size{};
    if (isatty(descriptor) != 0 && ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) {
        return std::max<std::size_t>(size.ws_col, kLeast);
    }
    if (const char* columns = std::getenv("COLUMNS")) {
        const std::string_view text = columns;
        std::size_t width = 0;
        const auto read = std::from_chars(text.data(), text.data() + text.size(), width);
        if (read.ec == std::errc() && read.ptr == text.data() + text.size()) return std::max(width, kLeast);
    }
    return kUsual;
}

std::string ShellLine(std::span<const std::string> words) {
    std::string line;
    for (const std::string& word : words) line += (line.empty() ? "" : " ") + ShellWord(word);
    return line;
}

std::string SizeText(int64_t bytes) {
    char text[32];
    if (bytes >= 1'000'000) {
        std::snprintf(text, sizeof text, "%.1f MB", static_cast<double>(bytes) / 1e6);
    } else {
        std::snprintf(text, sizeof text, "%.1f kB", static_cast<double>(bytes) / 1e3);
    }
    return text;
}

std::string ClockTime(double seconds) {
    const auto whole = static_cast<int64_t>(std::llround(std::clamp(seconds, 0.0, 1e9)));
    char text[32];
    if (whole >= 3600) {
        std::snprintf(text, sizeof text, "%lld:%02lld:%02lld", static_cast<long long>(whole / 3600),
                      static_cast<long long>(whole / 60 % 60), static_cast<long long>(whole % 60));
    } else {
        std::snprintf(text, sizeof text, "%lld:%02lld", static_cast<long long>(whole / 60),
                      static_cast<long long>(whole % 60));
    }
    return text;
}

}  // namespace App
