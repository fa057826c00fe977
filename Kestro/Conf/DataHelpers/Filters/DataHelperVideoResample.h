#pragma once

#include "Kestro/Conf/DataHelpers/Filters/DataHelperFilterBase.h"

namespace Kestro::Conf {

/// The filter that converts the frame rate.
class DataHelperVideoResample final : public DataHelperFilterBase {
public:
    DataHelperVideoResample();

    Core::Property GetDefaultSettings() const override;

    /// Copies the frame rate into the codec node, except where the preset keeps the source's.
    void ApplyPresetSettings(const Core::Property& source, Core::Property& target) const override;
};

}  // namespace Kestro::Conf
