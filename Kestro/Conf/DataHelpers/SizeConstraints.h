#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <span>
#include <string>
#include <vector>

#include "Kestro/Conf/FrameSize.h"
#include "Kestro/Conf/IPropertyConstraint.h"
#include "Kestro/RefCounted.h"

namespace Kestro::Conf {

/// The frame sizes offered for a resizer's frame-size mode (IResize::FRAME_SIZE_MODE). The only valid mode is
/// IResize::FRAME_SIZE_CUSTOM, with the width and height of one of the sizes.
class SizeConstraints final : public RefCounted<IPropertyConstraint> {
public:
    KESTRO_DATAHELPERS_API static boost::intrusive_ptr<IPropertyConstraint> Create(std::span<const FrameSize> sizes);

    /// Each size as "1280 x 720" and a node with width and height.
    void FillValueList(const boost::intrusive_ptr<IConstraintConsumer>& consumer) const override;
    /// Of any kind of value; never throws.
    bool IsValid(const Core::Property& value) const override;
    /// Never changes the value.
    bool CorrectValue(Core::Property& value) const override;
    /// Empty.
    std::string GetDescription(const std::string& settingName) const override;

private:
    explicit SizeConstraints(std::span<const FrameSize> sizes);

    std::vector<FrameSize> sizes_;
};

}  // namespace Kestro::Conf
