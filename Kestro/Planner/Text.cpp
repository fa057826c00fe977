#include "Kestro/Planner/Text.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <numeric>
#include <utility>

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

struct Character {
    unsigned code;
    std::size_t bytes;  ///< 0: it is no UTF-8
};

Character FirstOf(std::string_view text) {
    const auto byte = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    if (byte(0) < 0x80) return {byte(0), 1};
    const std::size_t bytes = byte(0) >= 0xf0 ? 4 : byte(0) >= 0xe0 ? 3 : 2;
    if (byte(0) < 0xc2 || byte(0) > 0xf4 || text.size() < bytes) return {0, 0};
    unsigned code = byte(0) & (0x7fU >> bytes);
    for (std::size_t i = 1; i < bytes; ++i) {
        if ((byte(i) & 0xc0) != 0x80) return {0, 0};
        code = code << 6 | (byte(i) & 0x3fU);
    }
    // Longer than it need be, or half of a pair.
    static constexpr unsigned kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool isHalf = code >= 0xd800 && code <= 0xdfff;
    return code < kLeast[bytes] || isHalf || code > 0x10ffff ? Character{0, 0} : Character{code, bytes};
}

/// Whether a character moves the cursor, turns the direction of writing or cannot be seen.
bool Steers(unsigned code) {
    static constexpr std::pair<unsigned, unsigned> kRanges[] = {{0x00, 0x1f},     {0x7f, 0x9f},     {0x61c, 0x61c},
                                                                {0x200e, 0x200f}, {0x2028, 0x202e}, {0x2066, 0x206f},
                                                                {0xfeff, 0xfeff}, {0xfff9, 0xfffb}, {0xe0000, 0xe007f}};
    return std::ranges::any_of(kRanges,
                               [code](const auto& range) { return code >= range.first && code <= range.second; });
}

}  // namespace

std::string Lowered(std::string text) {
    std::ranges::transform(text, text.begin(), Lower);
    return text;
}

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
    while (!text.empty()) {
        const Character character = FirstOf(text);
        char escaped[16] = {};
        if (character.bytes == 0) {
            std::snprintf(escaped, sizeof escaped, "\\x%02x", static_cast<unsigned char>(text.front()));
        } else if (Steers(character.code)) {
            std::snprintf(escaped, sizeof escaped, character.code < 0x80 ? "\\x%02x" : "\\u%04x", character.code);
        }
        const std::size_t taken = std::max<std::size_t>(character.bytes, 1);
        printable += escaped[0] != '\0' ? std::string_view(escaped) : text.substr(0, taken);
        text.remove_prefix(taken);
    }
    return printable;
}

std::string RatioText(const boost::rational<int64_t>& ratio) {
    return std::to_string(ratio.numerator()) + "/" + std::to_string(ratio.denominator());
}

std::string Nearest(std::string_view name, std::span<const std::string> candidates) {
    // The comparison takes quadratic time; nobody types a longer name.
    constexpr std::size_t kLongestName = 64;
    if (name.size() > kLongestName) return {};
    const std::string* nearest = nullptr;
    // Of a short name nothing is left after two changes.
    std::size_t least = (name.size() < 5 ? 1 : std::max<std::size_t>(2, name.size() / 3)) + 1;
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
