#include "Kestro/Proc/SettingsResizer.h"

#include <algorithm>
#include <cmath>

namespace Kestro::Proc {
namespace {

// Sides and percentages are clamped to it, so a product of two and a sum of a few fit into 64 bits.
constexpr int64_t kMaxFactor = SettingsResizer::MAX_SIDE;
static_assert(kMaxFactor <= INT64_MAX / kMaxFactor / 2);

int64_t Clamped(int64_t value) { return std::clamp<int64_t>(value, 0, kMaxFactor); }

// The even length nearest to numerator / denominator, the lower one of two.
int64_t EvenSide(int64_t numerator, int64_t denominator = 1) {
    const int64_t pairs = (numerator + denominator - 1) / (2 * denominator);
    return std::clamp(2 * pairs, SettingsResizer::MIN_SIDE, SettingsResizer::MAX_SIDE);
}

int64_t CustomSide(int64_t asked, int64_t source) { return asked > 0 ? EvenSide(Clamped(asked)) : source; }

// The same of a length that is no whole number.
int64_t EvenSide(double length) {
    const double side = 2.0 * std::ceil(length / 2.0 - 0.5);
    return static_cast<int64_t>(std::clamp<double>(side, SettingsResizer::MIN_SIDE, SettingsResizer::MAX_SIDE));
}

// The frame of square pixels that was asked for; a side that was not follows from the picture's shape.
FrameInfo CustomFrame(const FrameInfo& picture, int64_t width, int64_t height) {
    FrameInfo frame{CustomSide(width, picture.width), CustomSide(height, picture.height), 1};
    const double shape = static_cast<double>(picture.width) / static_cast<double>(picture.height) *
                         boost::rational_cast<double>(picture.sampleAspectRatio);
    if (width > 0 && height <= 0) frame.height = EvenSide(static_cast<double>(frame.width) / shape);
    if (height > 0 && width <= 0) frame.width = EvenSide(static_cast<double>(frame.height) * shape);
    return frame;
}

int64_t ScaledSide(int64_t percent, int64_t source) {
    return percent > 0 ? EvenSide(source * Clamped(percent), 100) : source;
}

// The largest frame of the picture's proportions that is inside the box and not larger than the picture.
FrameInfo FitInside(const FrameInfo& picture, int64_t boxWidth, int64_t boxHeight) {
    const auto [width, height, sampleAspectRatio] = picture;
    if (width <= boxWidth && height <= boxHeight) return picture;
    if (width * boxHeight >= height * boxWidth) {
        return {boxWidth, EvenSide(height * boxWidth, width), sampleAspectRatio};
    }
    return {EvenSide(width * boxHeight, height), boxHeight, sampleAspectRatio};
}

}  // namespace

FrameInfo SettingsResizer::GetOutputFrameSize(const FrameInfo& source) const {
    const FrameInfo even{EvenSide(Clamped(source.width)), EvenSide(Clamped(source.height)), source.sampleAspectRatio};
    switch (frameSizeMode) {
        case FrameSizeMode::Original:
            break;
        case FrameSizeMode::HalfOriginal:
            return {EvenSide(even.width, 2), EvenSide(even.height, 2), even.sampleAspectRatio};
        case FrameSizeMode::QuarterOriginal:
            return {EvenSide(even.width, 4), EvenSide(even.height, 4), even.sampleAspectRatio};
        case FrameSizeMode::Custom:
            if (fit != Fit::UpTo) return CustomFrame(even, width, height);
            return FitInside(even, CustomSide(width, even.width), CustomSide(height, even.height));
        case FrameSizeMode::CustomScale:
            return {ScaledSide(width, even.width), ScaledSide(height, even.height), even.sampleAspectRatio};
    }
    return even;
}

}  // namespace Kestro::Proc
