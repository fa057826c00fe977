#include "Kestro/Planner/Text.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <numeric>

namespace Kestro::Planner {
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

}  // namespace

std::string Join(std::span<const std::string> words, std::string_view separator) {
    std::string joined;
    for (const std::string& word : words) {
        if (&word != words.data()) joined += separator;
        joined += word;
    }
    return joined;
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

std::string RatioText(const boost::rational<int64_t>& ratio) {
    return std::to_string(ratio.numerator()) + "/" + std::to_string(ratio.denominator());
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

}  // namespace Kestro::Planner
