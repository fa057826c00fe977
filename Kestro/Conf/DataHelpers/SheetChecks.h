#pragma once

#include <cstdint>
#include <span>
#include <variant>

#include "Kestro/Conf/DataHelpers/Sheet.h"

/// What the compiler checks of a sheet: lists are not empty and hold nothing twice, and defaults are among the allowed
/// values.
namespace Kestro::Conf::Sheets {

/// Every text of the vocabulary stands once, so that its address tells which it is.
constexpr bool Same(const Text& a, const Text& b) { return &a.get() == &b.get(); }
constexpr bool Same(int64_t a, int64_t b) { return a == b; }
constexpr bool Same(ChannelLayout a, ChannelLayout b) { return a == b; }
constexpr bool Same(SampleFormats a, SampleFormats b) { return a == b; }
constexpr bool Same(const NamedInteger& a, const NamedInteger& b) { return a.value == b.value || Same(a.name, b.name); }
constexpr bool Same(const FrameSize& a, const FrameSize& b) { return a == b; }
constexpr bool Same(const FrameRate& a, const FrameRate& b) {
    return a.numerator * b.denominator == b.numerator * a.denominator;
}
constexpr bool Same(const SettingRow& a, const SettingRow& b) { return a.node == b.node && Same(a.tag, b.tag); }

template <class T>
constexpr bool Contains(std::span<const T> list, const T& wanted) {
    for (const T& entry : list) {
        if (Same(entry, wanted)) return true;
    }
    return false;
}

template <class T>
constexpr bool IsUnique(std::span<const T> list) {
    for (size_t i = 0; i < list.size(); ++i) {
        if (Contains(list.first(i), list[i])) return false;
    }
    return true;
}

template <class T>
constexpr bool IsList(std::span<const T> list) {
    return !list.empty() && IsUnique(list);
}

template <class T>
constexpr bool IsOffered(std::span<const T> list, const Initial& initial) {
    if (!IsList(list)) return false;
    if (std::holds_alternative<std::monostate>(initial)) return true;
    const T* value = std::get_if<T>(&initial);
    return value != nullptr && Contains(list, *value);
}

constexpr bool IsIn(const Range& range, const Initial& initial) {
    if (range.lo > range.hi || range.step < 0) return false;
    if (std::holds_alternative<std::monostate>(initial)) return true;
    const int64_t* value = std::get_if<int64_t>(&initial);
    return value != nullptr && range.lo <= *value && *value <= range.hi;
}

/// Constraints that are made by a function are not known to the compiler; the tests try them.
constexpr bool IsConsistent(const Allowed& allowed, const Initial& initial = {}) {
    if (const auto* range = std::get_if<Range>(&allowed)) return IsIn(*range, initial);
    if (const auto* list = std::get_if<Integers>(&allowed)) return IsOffered(list->values, initial);
    if (const auto* list = std::get_if<NamedIntegers>(&allowed)) return IsList(list->values);
    if (const auto* list = std::get_if<Texts>(&allowed)) return IsOffered(list->values, initial);
    if (const auto* list = std::get_if<Layouts>(&allowed)) return IsList(list->values);
    if (const auto* list = std::get_if<SampleFormatList>(&allowed)) return IsList(list->values);
    if (const auto* list = std::get_if<SamplesOf>(&allowed)) return IsList(list->values);
    if (const auto* list = std::get_if<Rates>(&allowed)) return IsList(list->values);
    if (const auto* list = std::get_if<FrameSizes>(&allowed)) return IsList(list->values);
    return true;
}

/// No setting stands twice, and every row says something.
constexpr bool IsConsistent(std::span<const SettingRow> rows) {
    for (const SettingRow& row : rows) {
        if (!IsConsistent(row.allowed, row.isOutside ? Initial() : row.initial)) return false;
        if (row.initial.index() == 0 && row.allowed.index() == 0) return false;
    }
    return IsUnique(rows);
}

/// The same of the settings that stand before and after the flag of the global header.
constexpr bool IsConsistent(std::span<const SettingRow> before, std::span<const SettingRow> after) {
    for (const SettingRow& row : after) {
        if (Contains(before, row)) return false;
    }
    return IsConsistent(before) && IsConsistent(after);
}

}  // namespace Kestro::Conf::Sheets
