#pragma once

#include <string>

#include "Kestro/Constant.h"

namespace Kestro::Proc {

/// The implementation that resizes video; see SettingsResizer for what the values mean.
class IResize {
public:
    /// Name of its node inside that of IFilterResize.
    static KESTRO_CONSTANT std::string CLASS_ID = "Resizer";

    /// Where the size of the frames comes from, text.
    static KESTRO_CONSTANT std::string FRAME_SIZE_MODE = "FrameSizeMode";
    static KESTRO_CONSTANT std::string FRAME_SIZE_ORIGINAL = "original";
    static KESTRO_CONSTANT std::string FRAME_SIZE_HALF_ORIGINAL = "half";
    static KESTRO_CONSTANT std::string FRAME_SIZE_QUARTER_ORIGINAL = "quarter";
    static KESTRO_CONSTANT std::string FRAME_SIZE_CUSTOM = "custom";
    static KESTRO_CONSTANT std::string FRAME_SIZE_CUSTOM_SCALE = "custom_scale";

    /// How the picture comes into a custom frame, text.
    static KESTRO_CONSTANT std::string MODE = "Fit";
    static KESTRO_CONSTANT std::string MODE_AUTO = "auto";
    static KESTRO_CONSTANT std::string MODE_STRETCH = "stretch";
    static KESTRO_CONSTANT std::string MODE_CROP = "crop";
    static KESTRO_CONSTANT std::string MODE_LETTERBOX = "letterbox";
    static KESTRO_CONSTANT std::string MODE_SMART_FIT = "smart_fit";
    static KESTRO_CONSTANT std::string MODE_UP_TO = "up_to";

    /// How pixels are interpolated, text: the names of the flags of FFmpeg's scaler.
    static KESTRO_CONSTANT std::string METHOD = "Scaler";
    static KESTRO_CONSTANT std::string METHOD_POINT = "neighbor";
    static KESTRO_CONSTANT std::string METHOD_FAST_BILINEAR = "fast_bilinear";
    static KESTRO_CONSTANT std::string METHOD_BILINEAR = "bilinear";
    static KESTRO_CONSTANT std::string METHOD_BICUBIC = "bicubic";

    IResize() = delete;
};

}  // namespace Kestro::Proc
