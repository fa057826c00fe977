#pragma once

#include <boost/rational.hpp>
#include <cstdint>
#include <string>

#include "Kestro/Constant.h"
#include "Kestro/Core/Property.h"
#include "Kestro/Export.h"

namespace Kestro::Proc {

/// The filter that converts video to the frame rate of the encoder.
class KESTRO_PROCINT_API IFilterFrameRate {
public:
    static KESTRO_CONSTANT std::string CLASS_ID = "VideoFrameRate";

    /// VideoFrameRate { Fps rational }: frames per second, or SettingsFilterFrameRate::MARK_USE_ORIGINAL_FRAMERATE.
    static Core::Property MakeSettings(const boost::rational<int64_t>& fps);

    IFilterFrameRate() = delete;
};

}  // namespace Kestro::Proc
