#include "Kestro/Proc/SettingsResizer.h"

#include <algorithm>

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
        case FrameSizeMode::Custom: {
            const int64_t boxWidth = CustomSide(width, even.width);
            const int64_t boxHeight = CustomSide(height, even.height);
            return fit == Fit::UpTo ? FitInside(even, boxWidth, boxHeight) : FrameInfo{boxWidth, boxHeight, 1};
        }
        case FrameSizeMode::CustomScale:
            return {ScaledSide(width, even.width), ScaledSide(height, even.height), even.sampleAspectRatio};
    }
    return even;
}

}  // namespace Kestro::Proc
