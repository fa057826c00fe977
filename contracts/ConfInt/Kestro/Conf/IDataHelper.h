#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "Kestro/Conf/HelperException.h"
#include "Kestro/Conf/IPropertyConstraint.h"
#include "Kestro/Conf/IValidationRule.h"
#include "Kestro/Core/Property.h"
#include "Kestro/Core/PropertyException.h"
#include "Kestro/IRefCountable.h"

namespace Kestro::Conf {

/// (filter class id, implementation name or empty), in the order in which the filters stand before the encoder.
using FilterList = std::vector<std::pair<std::string, std::string>>;
/// Setting (a tag, or a path below the helper's settings or the preset's root) to what it may be.
using ConstraintMap = std::map<std::string, boost::intrusive_ptr<IPropertyConstraint>>;
/// (path of the setting that the rule concerns, rule).
using ValidationRuleList = std::vector<std::pair<std::string, boost::intrusive_ptr<IValidationRule>>>;

/// The knowledge of one container format, encoder or filter.
///
/// Helpers are found in the registry (CreateDataHelper), shared by all callers and immutable: any number of threads may
/// use one at once. They keep no reference to the trees and lists that they are given.
class KESTRO_CONFINT_API IDataHelper : public virtual IRefCountable {
public:
    ~IDataHelper() override;

    /// The default settings, named by the node that they stand under in a preset.
    virtual Core::Property GetDefaultSettings() const = 0;
    /// Appends the filters that a stream encoded by this helper needs.
    virtual void GetRequiredFilters(FilterList& filters) const = 0;
    /// Appends the rules that tie one setting to another. Their paths start at the root of a tree that holds the list
    /// of streams (IPreset::KEY_STREAMS), the stream's codec node, its filter nodes and the format node
    /// (IPreset::KEY_FORMAT).
    virtual void FillValidationRules(ValidationRuleList& rules) const = 0;
    /// Inserts one constraint for each setting that the helper restricts, replacing an earlier one of the same setting.
    virtual void FillConstraints(ConstraintMap& constraints) const = 0;
    /// Copies the settings of a stored preset into the target as this helper permits. Throws HelperException for a
    /// preset that is not this helper's or cannot be understood, PropertyException for one that lacks a setting.
    virtual void ApplyPresetSettings(const Core::Property& source, Core::Property& target) const = 0;
    /// Repairs one stream's codec node. Throws HelperException naming the value that cannot be repaired.
    virtual void CorrectFormatCodec(Core::Property& codec) const = 0;
};

}  // namespace Kestro::Conf
