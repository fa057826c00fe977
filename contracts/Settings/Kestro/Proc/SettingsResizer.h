#pragma once

#include <cstdint>

#include "Kestro/Export.h"
#include "Kestro/Proc/FrameInfo.h"

namespace Kestro::Proc {

/// Settings of the video resizer: which size its frames have and how the picture is brought into them.
struct KESTRO_SETTINGS_API SettingsResizer {
    /// Where the size of the output frame comes from.
    enum class FrameSizeMode : int {
        Original,         ///< the source's size
        HalfOriginal,     ///< half of each side of the source
        QuarterOriginal,  ///< a quarter of each side of the source
        Custom,           ///< `width` x `height` pixels, as `fit` has it; one side alone: in the picture's shape
        CustomScale,      ///< `width` percent of the source's width and `height` percent of its height
    };

    /// How the picture comes into a Custom frame when their proportions differ.
    enum class Fit : int {
        Auto,       ///< exactly the asked frame; the resizer chooses between Stretch and Letterbox
        Stretch,    ///< exactly the asked frame; the picture fills it and its proportions change
        Crop,       ///< exactly the asked frame; the picture fills it, what stands out is cut off
        Letterbox,  ///< exactly the asked frame; the whole picture, with black bars
        SmartFit,   ///< exactly the asked frame; the picture is cropped a little and the rest stretched
        UpTo,       ///< the frame shrinks to the picture: inside the asked one, never larger than the source
    };

    /// How pixels are interpolated; the names are those of FFmpeg's scaler.
    enum class Method : int { Point, FastBilinear, Bilinear, Bicubic };

    /// The shortest and longest side of an output frame, pixels: 4:2:0 chroma needs a pair, FFmpeg's sizes are ints.
    static constexpr int64_t MIN_SIDE = 2;
    static constexpr int64_t MAX_SIDE = 2'147'483'646;

    FrameSizeMode frameSizeMode = FrameSizeMode::Original;
    int64_t width = 0;   ///< pixels or percent; 0 and less: the source's, but see Custom
    int64_t height = 0;  ///< pixels or percent; 0 and less: the source's, but see Custom
    Fit fit = Fit::Auto;
    Method method = Method::Bicubic;

    bool operator==(const SettingsResizer&) const = default;

    /// The frame that comes out for that source: both sides even and in MIN_SIDE..MAX_SIDE, whatever is asked. A side
    /// that divides to an odd length goes to the even length below.
    ///
    /// The shape of the pixels is the source's, but square after a Custom size with any fit other than UpTo.
    FrameInfo GetOutputFrameSize(const FrameInfo& source) const;
};

}  // namespace Kestro::Proc
