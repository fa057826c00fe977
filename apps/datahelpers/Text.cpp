#include "Text.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <numeric>

namespace App {
namespace {

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// Insertions, deletions, replacements and swaps of neighbours that lead from one name to the other, case apart.
std::size_t EditDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> beforeLast(b.size() + 1);
    std::vector<std::size_t> last(b.size() + 1);
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const bool same = Lower(a[i - 1]) == Lower(b[j - 1]);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same ? 0 : 1)});
            if (i > 1 && j > 1 && Lower(a[i - 1]) == Lower(b[j - 2]) && Lower(a[i - 2]) == Lower(b[j - 1])) {
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
            }
        }
        beforeLast.swap(last);
        last.swap(row);
    }
    return last[b.size()];
}

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

}  // namespace

std::string Join(std::span<const std::string> words, std::string_view separator) {
    std::string joined;
    for (const std::string& word : words) {
        if (&word != words.data()) joined += separator;
        joined += word;
    }
    return joined;
}

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

std::string Printable(std::string_view text) {
    std::string printable;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7f) {
            char escaped[5];
            std::snprintf(escaped, sizeof escaped, "\\x%02x", byte);
            printable += escaped;
        } else {
            printable += c;
        }
    }
    return printable;
}

std::string Nearest(std::string_view name, std::span<const std::string> candidates) {
    const std::string* nearest = nullptr;
    std::size_t least = std::max<std::size_t>(2, name.size() / 3) + 1;
    for (const std::string& candidate : candidates) {
        const std::size_t distance = EditDistance(name, candidate);
        // A name of which nothing is left is no guess.
        if (distance < least && distance < candidate.size()) {
            least = distance;
            nearest = &candidate;
        }
    }
    return nearest != nullptr ? *nearest : std::string();
}

std::string DidYouMean(std::string_view name, std::span<const std::string> candidates) {
    const std::string nearest = Nearest(name, candidates);
    return nearest.empty() ? std::string() : " Did you mean \"" + nearest + "\"?";
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
