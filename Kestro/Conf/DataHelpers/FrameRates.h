#pragma once

#include <cstdint>
#include <span>

namespace Kestro::Conf {

/// A frame rate, frames per second, and the name under which it is offered.
struct FrameRate {
    int64_t numerator;
    int64_t denominator;
    const char* name;
};

/// The source's own rate (SettingsFilterFrameRate::MARK_USE_ORIGINAL_FRAMERATE), and the rates of film and television
/// (SMPTE ST 170, ITU-R BT.709): the NTSC ones are 1000/1001 of a whole number.
namespace FrameRates {

inline constexpr FrameRate kSource{0, 1, "Auto"};
inline constexpr FrameRate k8{8, 1, "8"};
inline constexpr FrameRate k10{10, 1, "10"};
inline constexpr FrameRate k12{12, 1, "12"};
inline constexpr FrameRate k15{15, 1, "15"};
inline constexpr FrameRate k20{20, 1, "20"};
inline constexpr FrameRate kNtscFilm{24000, 1001, "23.97"};
inline constexpr FrameRate kFilm{24, 1, "24"};
inline constexpr FrameRate kPal{25, 1, "25"};
inline constexpr FrameRate kNtsc{30000, 1001, "29.97"};
inline constexpr FrameRate k30{30, 1, "30"};
inline constexpr FrameRate k48{48, 1, "48"};
inline constexpr FrameRate k50{50, 1, "50"};
inline constexpr FrameRate kNtscField{60000, 1001, "59.94"};
inline constexpr FrameRate k60{60, 1, "60"};
inline constexpr FrameRate k100{100, 1, "100"};
inline constexpr FrameRate k120{120, 1, "120"};

/// All of them, as the frame-rate filter offers them, and the source's own with those up to 30.
inline constexpr FrameRate kAll[] = {kSource, k8,  k10, k12, k15,        k20, kNtscFilm, kFilm, kPal,
                                     kNtsc,   k30, k48, k50, kNtscField, k60, k100,      k120};
inline constexpr std::span<const FrameRate> kUpTo30 = std::span(kAll).first(11);

/// The rates that MPEG-1 and MPEG-2 video have a code for (ISO/IEC 11172-2 and 13818-2, frame_rate_code); and with 20.
inline constexpr FrameRate kMpegAnd20[] = {k20, kNtscFilm, kFilm, kPal, kNtsc, k30, k50, kNtscField, k60};
inline constexpr std::span<const FrameRate> kMpeg = std::span(kMpegAnd20).subspan(1);

}  // namespace FrameRates

}  // namespace Kestro::Conf
