#pragma once

#include "Kestro/Conf/DataHelpers/Filters/DataHelperFilterBase.h"

namespace Kestro::Conf {

/// The filter that changes the loudness.
class DataHelperAudioVolume final : public DataHelperFilterBase {
public:
    DataHelperAudioVolume();

    Core::Property GetDefaultSettings() const override;
};

}  // namespace Kestro::Conf
