#pragma once

namespace Kestro::Conf {

/// Sample formats, with the numbers of FFmpeg's AVSampleFormat. A trailing p means planar: a plane a channel.
enum class SampleFormats : int {
    None = -1,  ///< no format is given: the source's is kept
    U8 = 0,
    S16 = 1,
    S32 = 2,
    Flt = 3,
    Dbl = 4,
    U8p = 5,
    S16p = 6,
    S32p = 7,
    Fltp = 8,
    Dblp = 9,
    S64 = 10,
    S64p = 11,
};

}  // namespace Kestro::Conf
