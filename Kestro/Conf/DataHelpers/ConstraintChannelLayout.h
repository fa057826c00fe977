#pragma once

#include <string>
#include <vector>

#include "Kestro/Conf/IPropertyConstraint.h"
#include "Kestro/RefCounted.h"

namespace Kestro::Conf {

/// One of a list of channel layouts, by name (LayoutRecord).
///
/// A layout off the list is corrected by going through the list from its first entry, which is the choice to begin
/// with: a later one replaces the choice when it has more channels and not more than the value, or when it has fewer
/// and not fewer than the value. So a list that begins with few channels gives the most that the value fills, and one
/// whose entries all have more than the value gives the fewest.
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
