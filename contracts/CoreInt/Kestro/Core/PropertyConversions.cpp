#include "Kestro/Core/PropertyConversions.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <numeric>
#include <system_error>

namespace Kestro::Core::Conversions {

namespace {

using Ratio = Property::Ratio;

/// The whole text as a number, or nothing.
template <class Number>
std::optional<Number> ReadAll(std::string_view text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return number;
}

/// boost::rational negates both parts of a ratio with a negative denominator: the one value that has no negative is
/// refused.
std::optional<Ratio> MakeRatio(int64_t numerator, int64_t denominator) {
    constexpr int64_t kMin = std::numeric_limits<int64_t>::min();
    if (denominator == 0 || denominator == kMin || (numerator == kMin && denominator < 0)) return std::nullopt;
    return Ratio(numerator, denominator);
}

/// "-12.50e-1" exactly, where numerator and denominator fit.
std::optional<Ratio> ReadDecimal(std::string_view text) {
    int64_t exponent = 0;
    if (const size_t e = text.find_first_of("eE"); e != std::string_view::npos) {
        std::string_view digits = text.substr(e + 1);
        if (digits.starts_with('+')) digits.remove_prefix(1);
        const auto read = ReadAll<int32_t>(digits);
        if (!read) return std::nullopt;
        exponent = *read;
        text = text.substr(0, e);
    }
    const bool negative = text.starts_with('-');
    if (negative) text.remove_prefix(1);

    // Below zero, where there is room for one more.
    const auto grow = [](int64_t& value, int64_t digit) {
        return !__builtin_mul_overflow(value, int64_t{10}, &value) && !__builtin_sub_overflow(value, digit, &value);
    };
    int64_t numerator = 0;
    bool seenPoint = false;
    bool seenDigit = false;
    for (const char c : text) {
        if (c == '.' && !seenPoint) {
            seenPoint = true;
        } else if (c >= '0' && c <= '9') {
            if (!grow(numerator, c - '0')) return std::nullopt;
            if (seenPoint) --exponent;
            seenDigit = true;
        } else {
            return std::nullopt;
        }
    }
    if (!seenDigit) return std::nullopt;
    if (numerator == 0) return Ratio(0);
    int64_t denominator = 1;
    for (; exponent > 0; --exponent) {
        if (!grow(numerator, 0)) return std::nullopt;
    }
    for (; exponent < 0; ++exponent) {
        if (numerator % 10 == 0) {
            numerator /= 10;
        } else if (!grow(denominator, 0)) {
            return std::nullopt;
        }
    }
    if (!negative) {
        if (numerator == std::numeric_limits<int64_t>::min()) return std::nullopt;
        numerator = -numerator;
    }
    return MakeRatio(numerator, denominator);
}

}  // namespace

std::optional<int64_t> ToInt64(double value) {
    // 2^63 itself is a double and does not fit; its negative does. A NaN fails both comparisons.
    constexpr double kLimit = 9223372036854775808.0;
    if (!(value >= -kLimit && value < kLimit)) return std::nullopt;
    return static_cast<int64_t>(value);
}

std::string Print(double value) {
    std::array<char, 32> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return {buffer.data(), end};
}

std::optional<Ratio> ToRatio(double value) {
    if (!std::isfinite(value)) return std::nullopt;
    return ReadDecimal(Print(value));
}

std::optional<Ratio> ParseRatio(std::string_view text) {
    const size_t slash = text.find('/');
    if (slash == std::string_view::npos) {
        if (const auto integer = ReadAll<int64_t>(text)) return Ratio(*integer);
        if (const auto decimal = ReadDecimal(text)) return decimal;
        if (text == "true" || text == "false") return Ratio(text == "true" ? 1 : 0);
        return std::nullopt;
    }
    const auto numerator = ReadAll<int64_t>(text.substr(0, slash));
    const auto denominator = ReadAll<int64_t>(text.substr(slash + 1));
    if (!numerator || !denominator) return std::nullopt;
    return MakeRatio(*numerator, *denominator);
}

std::optional<double> ParseDouble(std::string_view text) {
    if (const auto number = ReadAll<double>(text)) return std::isfinite(*number) ? number : std::nullopt;
    if (const auto ratio = ParseRatio(text)) return boost::rational_cast<double>(*ratio);
    return std::nullopt;
}

std::optional<int64_t> ParseInt64(std::string_view text) {
    if (const auto integer = ReadAll<int64_t>(text)) return integer;
    if (const auto ratio = ParseRatio(text)) return boost::rational_cast<int64_t>(*ratio);
    if (const auto number = ReadAll<double>(text)) return ToInt64(*number);
    return std::nullopt;
}

std::optional<bool> ParseBool(std::string_view text) {
    if (const auto number = ParseDouble(text)) return *number != 0.0;
    return std::nullopt;
}

}  // namespace Kestro::Core::Conversions
