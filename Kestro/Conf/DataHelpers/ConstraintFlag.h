#pragma once

#include <string>

#include "Kestro/Conf/IPropertyConstraint.h"
#include "Kestro/RefCounted.h"

namespace Kestro::Conf {

/// A flag that must have one value; the other value is corrected to it.
class ConstraintFlag final : public RefCounted<IPropertyConstraint> {
public:
    explicit ConstraintFlag(bool required);

    void FillValueList(const boost::intrusive_ptr<IConstraintConsumer>& consumer) const override;
    /// False for a value that is no boolean.
    bool IsValid(const Core::Property& value) const override;
    /// False for a value that is no boolean.
    bool CorrectValue(Core::Property& value) const override;
    /// Empty.
    std::string GetDescription(const std::string& settingName) const override;

private:
    bool required_;
};

}  // namespace Kestro::Conf
