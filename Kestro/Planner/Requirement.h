#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <cstdint>
#include <string>
#include <vector>

#include "Kestro/Conf/FrameSize.h"
#include "Kestro/Conf/IDataHelper.h"
#include "Kestro/Conf/IPropertyConstraint.h"
#include "Kestro/Conf/IValidationRule.h"
#include "Kestro/Conf/StreamRecord.h"
#include "Kestro/Core/Property.h"

namespace Kestro::Planner {

/// What a helper requires of one setting: a constraint, or the second half of a rule.
struct Requirement {
    std::string who;   ///< "the container mp4"
    std::string path;  ///< of the setting in the tree that rules run over
    boost::intrusive_ptr<Kestro::Conf::IPropertyConstraint> constraint;
    boost::intrusive_ptr<Kestro::Conf::IValidationRule> rule = nullptr;  ///< null: the requirement holds always
    bool isInstalled = false;                                            ///< the installed FFmpeg's, not a helper's

    /// Whether the tree has the setting and meets the rule's condition.
    bool Applies(const Kestro::Core::Property& tree) const;
    /// A value of a kind that the constraint cannot check is not accepted.
    bool Accepts(const Kestro::Core::Property& value) const;
    /// The frame sizes that are listed, where the requirement is on the resizer's frame-size mode; else nothing.
    std::vector<Conf::FrameSize> FrameSizes() const;
    /// The value moved to one that is accepted; unchanged when that cannot be done.
    Kestro::Core::Property Corrected(const Kestro::Core::Property& value) const;
    /// One sentence: who wants what of which setting, and when.
    std::string InWords() const;
};
using Requirements = std::vector<Requirement>;

/// Throws NotAcceptable (ValueNotAccepted): the value, which stands at the path as the user writes it, does not meet
/// the requirement. message: what the library said of it, if it spoke first.
[[noreturn]] void RefuseValue(const Requirement& requirement, const Kestro::Core::Property& value,
                              const std::string& userPath, const std::string& message);

void AddFormatRequirements(const std::string& container, const Kestro::Conf::IDataHelper& format,
                           Requirements& requirements);
void AddEncoderRequirements(const Conf::StreamRecord& kind, const std::string& codecId,
                            const Kestro::Conf::IDataHelper& encoder, Requirements& requirements);
void AddFilterRequirements(const std::string& classId, const Kestro::Conf::IDataHelper& filter,
                           Requirements& requirements);
/// What a disc requires of frame size and rate; nothing for another container.
void AddDiscRequirements(const Kestro::Core::Property& format, Requirements& requirements);
/// What the encoder of the installed FFmpeg takes of the values in the codec node; nothing without an encoder.
void AddInstalledEncoderRequirements(const std::string& encoderName, const Kestro::Core::Property& codec,
                                     Requirements& requirements);

}  // namespace Kestro::Planner
