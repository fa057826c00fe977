#include "Kestro/Planner/PicturePattern.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <system_error>
#include <vector>

#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Text.h"

namespace Kestro::Planner {
namespace {

constexpr std::string_view kProtocol = "file:";
// FFmpeg counts in int.
constexpr std::size_t kMostDigits = 9;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char c : text) escaped += c == '%' ? "%%" : std::string(1, c);
    return escaped;
}

}  // namespace

PicturePattern::PicturePattern(const std::string& path) : path_(path) {
    const std::size_t name = path.rfind('/') + 1;
    folder_ = path.substr(0, name);
    bool hasNumber = false;
    for (std::size_t at = name; at < path.size(); ++at) {
        std::string& part = hasNumber ? after_ : before_;
        if (path[at] != '%') {
            part += path[at];
            continue;
        }
        if (path.compare(at, 2, "%%") == 0) {
            part += path[at++];
            continue;
        }
        const std::size_t d = path.find_first_not_of("0123456789", at + 1);
        if (hasNumber || d == std::string::npos || path[d] != 'd' || d > at + 3 ||
            (d > at + 1 && path[at + 1] != '0')) {
            ThrowUnreadable("a sequence has one number in its name, such as %06d");
        }
        if (d > at + 1) digits_ = std::max<std::size_t>(std::stoul(path.substr(at + 1, d - at - 1)), 1);
        hasNumber = true;
        at = d;
    }
    if (!hasNumber || digits_ > kMostDigits) ThrowUnreadable("a sequence has a number in its name, such as %06d");
}

void PicturePattern::ThrowUnreadable(const std::string& reason) const {
    throw NotAcceptable(
        {.code = ProblemCode::UnreadableInput, .message = "Cannot read " + Printable(path_) + ": " + reason + "."});
}

std::string PicturePattern::FileName(int64_t number) const {
    const std::string digits = std::to_string(number);
    return before_ + std::string(digits_ - std::min(digits_, digits.size()), '0') + digits + after_;
}

std::optional<int64_t> PicturePattern::NumberOf(std::string_view name) const {
    if (name.size() <= before_.size() + after_.size() || !name.starts_with(before_) || !name.ends_with(after_)) {
        return std::nullopt;
    }
    const std::string_view digits = name.substr(before_.size(), name.size() - before_.size() - after_.size());
    if (digits.size() > kMostDigits || !std::ranges::all_of(digits, IsDigit)) return std::nullopt;
    int64_t number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    // The same number may be written with other zeros: that is another sequence.
    return FileName(number) == name ? std::optional(number) : std::nullopt;
}

PictureSequence PicturePattern::Find(const boost::rational<int64_t>& fps) const {
    std::error_code reason;
    std::vector<int64_t> numbers;
    std::filesystem::directory_iterator entry(folder_.empty() ? "." : folder_, reason);
    for (const std::filesystem::directory_iterator end; !reason && entry != end; entry.increment(reason)) {
        if (const auto number = NumberOf(entry->path().filename().string())) numbers.push_back(*number);
    }
    if (reason) ThrowUnreadable(reason.message());
    if (numbers.empty()) ThrowUnreadable("there is no picture of that name");
    std::ranges::sort(numbers);
    const auto gap = std::ranges::adjacent_find(numbers, [](int64_t one, int64_t next) { return next != one + 1; });
    if (gap != numbers.end()) {
        ThrowUnreadable(Printable(FileName(*gap + 1)) + " is missing, and there are pictures behind it");
    }
    return {.fps = fps, .first = numbers.front(), .count = static_cast<int64_t>(numbers.size())};
}

std::string PicturePattern::Url() const {
    const std::string number = digits_ > 1 ? "%0" + std::to_string(digits_) + "d" : "%d";
    return std::string(kProtocol) + Escaped(folder_ + before_) + number + Escaped(after_);
}

bool PicturePattern::Has(std::string_view url) const {
    const std::string folder = std::string(kProtocol) + folder_;
    return url.starts_with(folder) && NumberOf(url.substr(folder.size())).has_value();
}

}  // namespace Kestro::Planner
