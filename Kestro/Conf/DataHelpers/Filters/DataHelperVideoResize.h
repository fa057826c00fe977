#pragma once

#include "Kestro/Conf/DataHelpers/Filters/DataHelperFilterBase.h"

namespace Kestro::Conf {

/// The filter that changes the frame size. Width and height are even, since 4:2:0 chroma has half of them.
class DataHelperVideoResize final : public DataHelperFilterBase {
public:
    DataHelperVideoResize();

    Core::Property GetDefaultSettings() const override;

    /// A custom frame has an even width and height.
    void FillValidationRules(ValidationRuleList& rules) const override;

    /// Replaces the source's frame size in the codec node (width, height, and pixel aspect where it is there) by the
    /// one that the resizer makes of it. Throws PropertyException for a codec node without a size.
    void ApplyPresetSettings(const Core::Property& source, Core::Property& target) const override;

private:
    ValidationRuleList rules_;
};

}  // namespace Kestro::Conf
