#include "Kestro/Conf/DataHelpers/Filters/DataHelperFilterBase.h"

#include <utility>

namespace Kestro::Conf {

void DataHelperFilterBase::GetRequiredFilters(FilterList& /*filters*/) const {}

void DataHelperFilterBase::FillValidationRules(ValidationRuleList& /*rules*/) const {}

void DataHelperFilterBase::FillConstraints(ConstraintMap& constraints) const {
    for (const auto& [path, constraint] : constraints_) constraints.insert_or_assign(path, constraint);
}

void DataHelperFilterBase::ApplyPresetSettings(const Core::Property& /*source*/, Core::Property& /*target*/) const {}

void DataHelperFilterBase::CorrectFormatCodec(Core::Property& /*codec*/) const {}

void DataHelperFilterBase::Constrain(const std::string& path, boost::intrusive_ptr<IPropertyConstraint> constraint) {
    constraints_.insert_or_assign(path, std::move(constraint));
}

}  // namespace Kestro::Conf
