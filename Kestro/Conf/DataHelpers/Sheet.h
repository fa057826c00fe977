#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Kestro/Conf/ChannelLayout.h"
#include "Kestro/Conf/DataHelpers/FrameRates.h"
#include "Kestro/Conf/DataHelpers/List.h"
#include "Kestro/Conf/FrameSize.h"
#include "Kestro/Conf/IDataHelper.h"
#include "Kestro/Conf/IPropertyConstraint.h"
#include "Kestro/Conf/SampleFormats.h"
#include "Kestro/Core/Property.h"

/// The words in which the data sheets of encoders and containers are written, and what turns them into settings and
/// constraints. Sheets are constexpr and refer to the vocabulary's constants, never to copies of their texts.
namespace Kestro::Conf {

/// A constant of the vocabulary, by its address.
class Text {
public:
    constexpr Text() = default;
    constexpr Text(const std::string& constant) : constant_(&constant) {}
    Text(const std::string&&) = delete;

    constexpr const std::string& get() const { return *constant_; }
    constexpr operator const std::string&() const { return *constant_; }

private:
    const std::string* constant_ = nullptr;
};

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
/// This flag alone; the other one is corrected to it.
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
/// Frames of one of these sizes, offered for the resizer's frame-size mode.
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
    bool isOutside = false;  ///< the default itself is not among the allowed values
};

/// The path of a setting from the codec's or the format's own node, or from the root where a filter holds it; it is the
/// setting's key in a ConstraintMap.
std::string SettingKey(Node node, const std::string& tag);
/// The path of a setting from the root of the tree that rules run over. ownNode: the name of the codec's own node.
std::string SettingPath(const std::string& ownNode, Node node, const std::string& tag);

/// Writes a row's default into the node that it belongs to (the codec's options are made when they are not there).
void WriteDefault(Core::Property& own, const SettingRow& row);

/// Makes the constraints of those rows, under the keys of their settings.
void AddConstraints(std::span<const SettingRow> rows, ConstraintMap& constraints);

/// Null for a setting that may be anything.
boost::intrusive_ptr<IPropertyConstraint> MakeConstraint(const Allowed& allowed);

/// `std::vector<std::string>` of a list of texts.
std::vector<std::string> ToStrings(std::span<const Text> texts);

}  // namespace Kestro::Conf
