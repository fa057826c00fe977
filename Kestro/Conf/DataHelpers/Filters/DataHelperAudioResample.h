#pragma once

#include "Kestro/Conf/DataHelpers/Filters/DataHelperFilterBase.h"

namespace Kestro::Conf {

/// The filter that converts sample rate, channel layout and sample format.
class DataHelperAudioResample final : public DataHelperFilterBase {
public:
    /// The sample rate that stands for the source's own.
    static constexpr int64_t KEEP_SAMPLE_RATE = -1;

    DataHelperAudioResample();

    Core::Property GetDefaultSettings() const override;

    /// Copies rate and layout into the codec node, except where the preset keeps the source's (-1, unknown), and brings
    /// the bits per sample of a codec node in line with its sample format. Throws HelperException for a sample format
    /// that is not known.
    void ApplyPresetSettings(const Core::Property& source, Core::Property& target) const override;
};

}  // namespace Kestro::Conf
