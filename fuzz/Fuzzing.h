#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <limits>
#include <span>
#include <string>
#include <type_traits>

/// The program that checks what it is given, in libFuzzer's name.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// What the fuzzers share.
namespace Fuzzing {

/// Ends the program with the broken promise: the input that led there is then a finding.
inline void Require(bool holds, const std::string& promise) {
    if (holds) return;
    std::cerr << "Broken promise: " << promise << '\n';
    std::abort();
}

/// Makes decisions and values out of bytes. After the last byte everything is zero.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : rest_(data, size) {}

    bool IsAtEnd() const { return rest_.empty(); }

    std::uint8_t Byte() { return Raw<std::uint8_t>(); }
    bool Bool() { return (Byte() & 1) != 0; }
    /// 0..count-1; count is above 0 and at most 65536.
    std::size_t Below(std::size_t count) { return (count <= 256 ? Byte() : Raw<std::uint16_t>()) % count; }

    /// Small numbers, the limits, and any other.
    std::int64_t Integer() {
        using Limits = std::numeric_limits<std::int64_t>;
        constexpr std::int64_t kEdges[] = {0, -1, 1, 2, Limits::min(), Limits::max(), Limits::min() + 1, 1LL << 53};
        switch (Byte() % 4) {
            case 0:
                return kEdges[Below(std::size(kEdges))];
            case 1:
                return Raw<std::int8_t>();
            case 2:
                return Raw<std::int32_t>();
            default:
                return Raw<std::int64_t>();
        }
    }

    double Real() {
        using Limits = std::numeric_limits<double>;
        constexpr double kEdges[] = {Limits::quiet_NaN(),
                                     Limits::infinity(),
                                     -Limits::infinity(),
                                     Limits::max(),
                                     Limits::denorm_min(),
                                     0x1p63,
                                     -0x1p63,
                                     -0.0};
        switch (Byte() % 3) {
            case 0:
                return kEdges[Below(std::size(kEdges))];
            case 1:
                return static_cast<double>(Raw<std::int32_t>()) / 1000.0;
            default:
                return Raw<double>();
        }
    }

    /// Any bytes, at most 255.
    std::string Text() {
        const std::size_t wanted = Byte();
        const std::size_t size = std::min(wanted, rest_.size());
        std::string text(rest_.begin(), rest_.begin() + static_cast<std::ptrdiff_t>(size));
        rest_ = rest_.subspan(size);
        return text;
    }

private:
    template <class T>
    T Raw() {
        static_assert(std::is_trivially_copyable_v<T>);
        T value{};
        const std::size_t size = std::min(sizeof(T), rest_.size());
        std::memcpy(&value, rest_.data(), size);
        rest_ = rest_.subspan(size);
        return value;
    }

    std::span<const std::uint8_t> rest_;
};

}  // namespace Fuzzing
