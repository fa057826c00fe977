#pragma once

namespace Kestro::Conf {

/// The channel layouts that have a LayoutRecord: FFmpeg's standard layouts with native channel order, in FFmpeg's
/// order. The codes are part of stored settings: add new ones at the end.
enum class ChannelLayout : int {
    Unknown = 0,  ///< no layout is given: the source's is kept
    Mono = 1,
    Stereo = 2,
    Layout2Point1,
    Surround,   ///< 3.0
    Layout2_1,  ///< 3.0(back)
    Layout4Point0,
    Quad,
    Layout2_2,  ///< quad(side)
    Layout3Point1,
    Layout5Point0Back,  ///< 5.0
    Layout5Point0,      ///< 5.0(side)
    Layout4Point1,
    Layout5Point1Back,  ///< 5.1
    Layout5Point1,      ///< 5.1(side)
    Layout6Point0,
    Layout6Point0Front,
    Hexagonal,
    Layout6Point1,
    Layout6Point1Back,
    Layout6Point1Front,
    Layout7Point0,
    Layout7Point0Front,
    Layout7Point1,
    Layout7Point1WideBack,  ///< 7.1(wide)
    Layout7Point1Wide,      ///< 7.1(wide-side)
    Octagonal,
    Hexadecagonal,
    StereoDownmix,
    Layout22Point2,
};

}  // namespace Kestro::Conf
