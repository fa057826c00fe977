#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "Kestro/Conf/IPropertyConstraint.h"
#include "Kestro/RefCounted.h"

namespace Kestro::Conf {

/// The frame sizes offered for a resizer's frame-size mode (IResize::FRAME_SIZE_MODE). The only valid mode is
/// IResize::FRAME_SIZE_CUSTOM, with the width and height of one of the sizes.
class SizeConstraints final : public RefCounted<IPropertyConstraint> {
public:
    /// (width, height) in pixels
    using Sizes = std::vector<std::pair<int64_t, int64_t>>;

    explicit SizeConstraints(Sizes sizes);

    /// Each size as "1280 x 720" and a node with width and height.
    void FillValueList(const boost::intrusive_ptr<IConstraintConsumer>& consumer) const override;
    /// Of any kind of value; never throws.
    bool IsValid(const Core::Property& value) const override;
    /// Never changes the value.
    bool CorrectValue(Core::Property& value) const override;
    /// Empty.
    std::string GetDescription(const std::string& settingName) const override;

private:
    Sizes sizes_;
};

}  // namespace Kestro::Conf
