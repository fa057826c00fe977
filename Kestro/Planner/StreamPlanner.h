#pragma once

#include <string>
#include <vector>

#include "Kestro/Core/Property.h"
#include "Kestro/Planner/CheckedPreset.h"
#include "Kestro/Planner/Plan.h"
#include "Kestro/Planner/Requirement.h"

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
    Kestro::Core::Property Settle();

private:
    using Property = Kestro::Core::Property;

    struct Filter {
        std::string classId;
        HelperPtr helper;
        Property settings;  ///< as asked for: marks that keep the source's values still stand in them
    };

    void CheckCodec() const;
    void StartFromSource();
    void CollectFilters();
    void AddFilter(const std::string& classId);
    void CompleteFilter(Filter& filter, const Property& asked);
    void CheckFilters() const;
    void CheckImplementation(const Filter& filter) const;
    void ApplyFilters();
    void ApplyPreset();
    void Correct(const Kestro::Conf::IDataHelper& helper, const std::string& who, const std::string& nodeName);
    void FitUnasked(bool codecSettingsToo);
    /// Gives discs and DV the sample aspect ratio that televisions take for granted.
    void SampleAspectRatioForTelevision();
    void FitFrameSize(const Requirement& requirement);
    void CheckAll() const;
    /// Tells what became of the settings that the preset leaves to the program by an automatic value.
    void TellAutomatic();
    /// Why a setting that keeps the input's value has the one that it has in the end.
    std::string AutomaticReason(const std::string& path, const Property& value) const;
    void ReportWhatIsNotUsed(const Property& asked, const Property& used, const std::string& below);

    /// The filters' settings as they are asked for, each under the filter's name.
    Property AskedFilters() const;
    /// The filter's settings with the values that the stream has in the end.
    Property Aligned(const Filter& filter) const;
    /// The tree that rules run over: { Streams, codec node, filter nodes, Format }.
    Property RuleTree() const;
    Property StreamNode() const;

    /// Whether the tree keeps a requirement that applies to it. A filter that keeps the input's value also satisfies a
    /// requirement that lets it.
    bool IsMet(const Requirement& requirement, const Property& tree) const;
    /// Whether the preset gives that setting (a path in the rules' tree) a value of its own.
    bool IsAsked(const std::string& path) const;
    /// The same setting in the codec node, as a path below it; empty for what a codec node does not hold.
    std::string InCodec(const std::string& path) const;
    /// The setting of the codec node where the user finds it: at the filter that gives it, if there is one.
    std::string Place(const std::string& inCodec) const;
    /// A path of the rules' tree as the user writes it.
    std::string UserPath(const std::string& path) const;

    void AddCorrection(const std::string& path, const Property* before, const Property* after,
                       const std::string& reason);
    /// Why the value of the setting at that place was not left alone.
    std::string Reason(const Property& tree, const std::string& place, const Property& before,
                       const std::string& who) const;
    [[noreturn]] void Refuse(const Requirement& requirement, const Property& value, const std::string& message) const;
    [[noreturn]] void ExplainApplyFailure(const std::string& message) const;

    const CheckedPreset& preset_;
    const PresetStream& stream_;
    const MediaStream& source_;
    Plan& plan_;
    HelperPtr encoder_;
    std::string encoderName_;
    Property input_;  ///< the codec node as the input and the encoder's defaults have it
    Property codec_;
    std::vector<Filter> filters_;
    Requirements filterRequirements_;  ///< of what is asked of the filters
    Requirements requirements_;        ///< of what the stream has in the end
};

}  // namespace Kestro::Planner
