#pragma once

#include "Kestro/Conf/IDataHelper.h"
#include "Kestro/RefCounted.h"

namespace Kestro::Conf {

/// Base of every filter helper, with what most of them have in common. Constraints stand under the paths of the
/// settings below the filter's own node; ApplyPresetSettings takes such a node and copies its values into a stream's
/// codec node.
class DataHelperFilterBase : public RefCounted<IDataHelper> {
public:
    void GetRequiredFilters(FilterList& filters) const override;
    void FillValidationRules(ValidationRuleList& rules) const override;
    void FillConstraints(ConstraintMap& constraints) const override;
    void ApplyPresetSettings(const Core::Property& source, Core::Property& target) const override;
    void CorrectFormatCodec(Core::Property& codec) const override;

protected:
    /// For a filter's constructor: sets the constraint of one of its settings.
    void Constrain(const std::string& path, boost::intrusive_ptr<IPropertyConstraint> constraint);

private:
    ConstraintMap constraints_;
};

}  // namespace Kestro::Conf
