#pragma once

#include <string>
#include <vector>

#include "Kestro/Conf/IPropertyConstraint.h"
#include "Kestro/RefCounted.h"

namespace Kestro::Conf {

/// One of a list of channel layouts, by name (LayoutRecord).
///
/// A layout that is not listed is corrected to one with about as many channels. The choice starts as the first entry;
/// each later entry replaces it if it has more channels than the choice but not more than the value, or fewer than the
/// choice but not fewer than the value.
class ConstraintChannelLayout final : public RefCounted<IPropertyConstraint> {
public:
    explicit ConstraintChannelLayout(std::vector<std::string> layouts);

    void FillValueList(const boost::intrusive_ptr<IConstraintConsumer>& consumer) const override;
    /// A value that is no text throws.
    bool IsValid(const Core::Property& value) const override;
    /// False for a layout that no LayoutRecord knows: how many channels it has cannot be told.
    bool CorrectValue(Core::Property& value) const override;
    /// Empty.
    std::string GetDescription(const std::string& settingName) const override;

private:
    std::vector<std::string> layouts_;
};

}  // namespace Kestro::Conf
