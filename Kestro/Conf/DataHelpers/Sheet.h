#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Kestro/Conf/ChannelLayout.h"
#include "Kestro/Conf/IPropertyConstraint.h"
#include "Kestro/Conf/SampleFormats.h"
#include "Kestro/Core/Property.h"

/// The words in which the data sheets of encoders and containers are written, and their one translation into settings
/// and constraints. Sheets are constexpr and refer to the vocabulary's constants, never to copies of their texts.
namespace Kestro::Conf {

/// A constant of the vocabulary.
using Text = std::reference_wrapper<const std::string>;

/// A frame rate, frames per second, and the name under which it is offered.
struct FrameRate {
    int64_t numerator;
    int64_t denominator;
    const char* name;
};

/// The source's own rate (SettingsFilterFrameRate::MARK_USE_ORIGINAL_FRAMERATE), and the rates of film and television
/// (SMPTE ST 170, ITU-R BT.709): the NTSC ones are 1000/1001 of a whole number.
namespace FrameRates {
inline constexpr FrameRate kSource{0, 1, "Auto"};
inline constexpr FrameRate k8{8, 1, "8"};
inline constexpr FrameRate k10{10, 1, "10"};
inline constexpr FrameRate k12{12, 1, "12"};
inline constexpr FrameRate k15{15, 1, "15"};
inline constexpr FrameRate k20{20, 1, "20"};
inline constexpr FrameRate kNtscFilm{24000, 1001, "23.97"};
inline constexpr FrameRate kFilm{24, 1, "24"};
inline constexpr FrameRate kPal{25, 1, "25"};
inline constexpr FrameRate kNtsc{30000, 1001, "29.97"};
inline constexpr FrameRate k30{30, 1, "30"};
inline constexpr FrameRate k50{50, 1, "50"};
inline constexpr FrameRate kNtscField{60000, 1001, "59.94"};
inline constexpr FrameRate k60{60, 1, "60"};
/// The rates that MPEG-1 and MPEG-2 video have a code for (ISO/IEC 11172-2 and 13818-2, frame_rate_code).
inline constexpr FrameRate kMpeg[] = {kNtscFilm, kFilm, kPal, kNtsc, k30, k50, kNtscField, k60};
}  // namespace FrameRates

// What a setting may be.

/// An integer, bounds inclusive; step 0: none.
struct Range {
    int64_t lo;
    int64_t hi;
    int64_t step = 0;
};
/// One of these integers, shown by their digits.
struct Integers {
    std::span<const int64_t> values;
};
/// One of these integers, each shown by its name.
struct NamedInteger {
    Text name;
    int64_t value;
};
struct NamedIntegers {
    std::span<const NamedInteger> values;
};
/// This flag; the other is corrected to it.
struct Flag {
    bool value;
};
/// One of these texts.
struct Texts {
    std::span<const Text> values;
};
/// One of these frame rates.
struct Rates {
    std::span<const FrameRate> values;
};
/// One of these channel layouts; corrected by number of channels.
struct Layouts {
    std::span<const ChannelLayout> values;
};
/// Any channel layout that has a record.
struct AnyLayout {};
/// One of these sample formats; corrected by size of the sample.
struct SampleFormatList {
    std::span<const SampleFormats> values;
};
/// One of these sample formats or of their counterparts: planar and packed formats hold the same samples.
struct SamplesOf {
    std::span<const SampleFormats> values;
};
/// Frames of one of these sizes: what the resizer's frame-size mode may give.
struct FrameSize {
    int64_t width;   ///< pixels
    int64_t height;  ///< pixels
};
struct FrameSizes {
    std::span<const FrameSize> values;
};
/// An even number of pixels.
struct EvenSize {};
/// What a predicate accepts.
struct Satisfying {
    bool (*accepts)(const Core::Property& value);
    Text description;  ///< one of IPropertyConstraint::DESCRIPTION_ID_
};
/// One constraint object that several helpers refer to.
struct Shared {
    const boost::intrusive_ptr<IPropertyConstraint>& (*constraint)();
};

/// Whether a value is a frame rate above 0, or the mark that keeps the source's.
bool IsFrameRate(const Core::Property& value);
inline constexpr Satisfying kAnyFrameRate{IsFrameRate, IPropertyConstraint::DESCRIPTION_ID_FRAME_RATE};

/// std::monostate: anything, there is no constraint.
using Allowed = std::variant<std::monostate, Range, Integers, NamedIntegers, Flag, Texts, Rates, Layouts, AnyLayout,
                             SampleFormatList, SamplesOf, FrameSizes, EvenSize, Satisfying, Shared>;
/// std::monostate: the setting is not among the defaults.
using Initial = std::variant<std::monostate, bool, int64_t, Text>;

/// The node that holds a setting.
enum class Node : uint8_t {
    Own,         ///< the codec's or the format's own node
    Options,     ///< the encoder's options below its codec node
    Resampler,   ///< the settings of the audio resampler's implementation
    FrameRate,   ///< the frame-rate filter
    Resizer,     ///< the settings of the video resizer's implementation
    FirstVideo,  ///< the codec of the preset's first stream, a video stream
    InFormat,    ///< the codec's node among the streams that the format node keeps
};

/// One setting: where it stands, what it is by default and what it may be.
struct SettingRow {
    Text tag;
    Node node = Node::Own;
    Initial initial = {};
    Allowed allowed = {};
    bool isOutside = false;  ///< the default is one that nobody may ask for
};

/// The path of a setting from the codec's or the format's own node, or from the root where a filter holds it; it is the
/// setting's key in a ConstraintMap.
std::string SettingKey(Node node, const std::string& tag);
/// The path of a setting from the root of the tree that rules run over. ownNode: the name of the codec's own node.
std::string SettingPath(const std::string& ownNode, Node node, const std::string& tag);

/// Writes a row's default into the node that it belongs to (the codec's options are made when they are not there).
void WriteDefault(Core::Property& own, const SettingRow& row);

/// Null for a setting that may be anything.
boost::intrusive_ptr<IPropertyConstraint> MakeConstraint(const Allowed& allowed);

/// `std::vector<std::string>` of a list of texts.
std::vector<std::string> ToStrings(std::span<const Text> texts);

// What the compiler checks of a sheet.

namespace Sound {

/// Constants are compared by identity: every text of the vocabulary stands once.
constexpr bool Same(const Text& a, const Text& b) { return &a.get() == &b.get(); }
constexpr bool Same(int64_t a, int64_t b) { return a == b; }
constexpr bool Same(ChannelLayout a, ChannelLayout b) { return a == b; }
constexpr bool Same(SampleFormats a, SampleFormats b) { return a == b; }
constexpr bool Same(const NamedInteger& a, const NamedInteger& b) { return a.value == b.value || Same(a.name, b.name); }
constexpr bool Same(const FrameSize& a, const FrameSize& b) { return a.width == b.width && a.height == b.height; }
constexpr bool Same(const FrameRate& a, const FrameRate& b) {
    return a.numerator * b.denominator == b.numerator * a.denominator;
}

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

/// The default lies in the list or range, which is not empty and holds nothing twice. Shared constraints are tested
/// when they exist.
constexpr bool IsSound(const Initial& initial, const Allowed& allowed) {
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

/// Every row is sound, says something, and no setting stands twice.
constexpr bool IsSound(std::span<const SettingRow> rows) {
    for (size_t i = 0; i < rows.size(); ++i) {
        const SettingRow& row = rows[i];
        if (!IsSound(row.isOutside ? Initial() : row.initial, row.allowed)) return false;
        if (row.initial.index() == 0 && row.allowed.index() == 0) return false;
        for (const SettingRow& earlier : rows.first(i)) {
            if (Same(earlier.tag, row.tag) && earlier.node == row.node) return false;
        }
    }
    return true;
}

}  // namespace Sound

}  // namespace Kestro::Conf
