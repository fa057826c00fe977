#pragma once

#include <string>

#include "Kestro/Constant.h"
#include "Kestro/Core/Property.h"
#include "Kestro/Export.h"
#include "Kestro/Proc/SettingsResizer.h"

namespace Kestro::Proc {

/// The filter that brings video to the frame size of the encoder.
class KESTRO_PROCINT_API IFilterResize {
public:
    static KESTRO_CONSTANT std::string CLASS_ID = "VideoResize";

    /// VideoResize { Resizer { TypeId = default, FrameSizeMode text, Width integer, Height integer, Fit text, Scaler
    /// text } }. A mode outside its enumeration throws Conf::ConfException.
    static Core::Property Settings2Property(const SettingsResizer& settings);

    /// Reads that tree; what is missing in it has its default. A text that is none of IResize throws
    /// Conf::ConfException with the text in TagDetails, a value of another kind Core::PropertyException.
    static SettingsResizer Property2Settings(const Core::Property& tree);

    IFilterResize() = delete;
};

}  // namespace Kestro::Proc
