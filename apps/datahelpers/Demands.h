#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <cstdint>
#include <string>
#include <vector>

#include "Kestro/Conf/IPropertyConstraint.h"
#include "Kestro/Conf/IValidationRule.h"
#include "Kestro/Core/Property.h"

#include "Registry.h"

namespace App {

struct FrameSize {
    int64_t width;
    int64_t height;
    bool operator==(const FrameSize&) const = default;
};

/// What a helper demands of one setting: a constraint, or the second half of a rule.
struct Demand {
    std::string who;   ///< "the container mp4"
    std::string path;  ///< of the setting in the tree that rules run over
    boost::intrusive_ptr<Kestro::Conf::IPropertyConstraint> constraint;
    boost::intrusive_ptr<Kestro::Conf::IValidationRule> rule = nullptr;  ///< null: the demand holds always
    bool isInstalled = false;                                            ///< the installed FFmpeg's, not a helper's

    /// Whether the tree has the setting and meets the rule's condition.
    bool Applies(const Kestro::Core::Property& tree) const;
    /// A value of a kind that the constraint cannot check is not accepted.
    bool Accepts(const Kestro::Core::Property& value) const;
    /// The frame sizes that are listed, where the demand is on the resizer's frame-size mode; else nothing.
    std::vector<FrameSize> FrameSizes() const;
    /// The value moved to one that is accepted; unchanged when that cannot be done.
    Kestro::Core::Property Corrected(const Kestro::Core::Property& value) const;
    /// One sentence: who wants what of which setting, and when.
    std::string InWords() const;
};
using Demands = std::vector<Demand>;

/// Throws Failure (NotAcceptable): the value, which stands at the path as the user writes it, does not meet the demand.
/// message: what the library said of it, if it spoke first.
[[noreturn]] void RefuseValue(const Demand& demand, const Kestro::Core::Property& value, const std::string& userPath,
                              const std::string& message);

void AddFormatDemands(const std::string& container, const Kestro::Conf::IDataHelper& format, Demands& demands);
void AddEncoderDemands(const StreamKind& kind, const std::string& codecId, const Kestro::Conf::IDataHelper& encoder,
                       Demands& demands);
void AddFilterDemands(const std::string& classId, const Kestro::Conf::IDataHelper& filter, Demands& demands);
/// What the encoder of the installed FFmpeg takes of the values in the codec node; nothing without an encoder.
void AddInstalledEncoderDemands(const std::string& encoderName, const Kestro::Core::Property& codec, Demands& demands);

}  // namespace App
