#pragma once

namespace Kestro::Conf {

/// Kind of the stream that a codec belongs to.
enum class StreamType : int { Video = 1, Audio = 2, Subtitle = 3 };

}  // namespace Kestro::Conf
