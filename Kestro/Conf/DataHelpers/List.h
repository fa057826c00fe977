#pragma once

#include <array>
#include <cstddef>
#include <initializer_list>
#include <span>

namespace Kestro::Conf {

/// Up to Capacity values that lie in the list itself, so that a sheet is one constant without arrays beside it.
/// A longer list does not compile where it is constexpr, and throws std::out_of_range elsewhere.
template <class T, size_t Capacity>
class List {
public:
    constexpr List() = default;
    constexpr List(std::initializer_list<T> values) { Fill({values.begin(), values.size()}); }
    template <size_t N>
    constexpr List(const T (&values)[N]) {
        Fill(values);
    }

    constexpr operator std::span<const T>() const { return {values_.data(), size_}; }
    constexpr const T* begin() const { return values_.data(); }
    constexpr const T* end() const { return values_.data() + size_; }
    constexpr size_t size() const { return size_; }

private:
    constexpr void Fill(std::span<const T> values) {
        for (const T& value : values) values_.at(size_++) = value;
    }

    std::array<T, Capacity> values_ = {};
    size_t size_ = 0;
};

}  // namespace Kestro::Conf
