#pragma once

#include <string>

#include "Kestro/Exception.h"
#include "Kestro/Planner/CheckedPreset.h"
#include "Kestro/Planner/MediaInfo.h"
#include "Kestro/Planner/Plan.h"
#include "Kestro/Planner/Requirement.h"
#include "Kestro/Planner/StreamSettings.h"

namespace Kestro::Planner {

/// Settles the settings of one output stream, in the order in which the library is meant to be used: the source's
/// values, the filters, the preset, the container's corrections, the encoder's, and at last every constraint and rule.
///
/// A value that nobody asked for (the source's, or a default) is moved into what encoder and container take; what the
/// preset asks for is corrected by the library alone, or refused.
class StreamPlanner {
public:
    /// Choices, corrections and notes go into the plan. The references must outlive the planner.
    StreamPlanner(const CheckedPreset& preset, const PresetStream& stream, const MediaStream& source, Plan& plan);

    /// The stream's settings. Throws NotAcceptable.
    Core::Property Settle();

private:
    void CheckCodec() const;
    void StartFromSource();
    void AddRequirements();
    void Correct(const Conf::IDataHelper& helper, Origin origin, const std::string& who, const std::string& nodeName);
    [[noreturn]] void RefuseUncorrectable(const Exception& exception, const Core::Property& tree) const;
    void CheckAll() const;
    /// Gives discs and DV the sample aspect ratio that televisions take for granted.
    void SetSampleAspectRatioForTelevision();
    void Refuse(const Requirement& requirement, const Core::Property& tree) const;

    const CheckedPreset& preset_;
    const PresetStream& stream_;
    const MediaStream& source_;
    Plan& plan_;
    HelperPtr encoder_;
    StreamSettings settings_;
    Requirements filterRequirements_;  ///< of what is asked of the filters
    Requirements requirements_;        ///< of what the stream has in the end
};

}  // namespace Kestro::Planner
