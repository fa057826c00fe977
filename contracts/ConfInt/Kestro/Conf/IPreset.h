#pragma once

#include <string>

#include "Kestro/Constant.h"

namespace Kestro::Conf {

/// Layout of a preset: the names of its nodes and the values of a stream's type.
///
///     Format { Container, ... }
///     Streams {
///         0 { TypeId = video, VideoCodec { CodecId, ... }, VideoFrameRate { ... }, VideoResize { ... } }
///         1 { TypeId = audio, AudioCodec { CodecId, ... }, AudioResample { ... }, AudioVolume { ... } }
///     }
///
/// No tag's text is part of another tag of the same tree or of a filter's class id: rules search paths for it.
class IPreset {
public:
    /// The container; also the registry type of format helpers.
    static KESTRO_CONSTANT std::string KEY_FORMAT = "Format";
    /// A stream's codec node; the first two are also the registry types of encoder helpers.
    static KESTRO_CONSTANT std::string KEY_FILTER_AUDIO_CODEC = "AudioCodec";
    static KESTRO_CONSTANT std::string KEY_FILTER_VIDEO_CODEC = "VideoCodec";
    static KESTRO_CONSTANT std::string KEY_FILTER_SUBTITLE_CODEC = "SubtitleCodec";
    /// The list of output streams, named 0, 1, 2 in order.
    static KESTRO_CONSTANT std::string KEY_STREAMS = "Streams";
    /// Type of a stream (a STREAM_TYPE_ value) or of a filter's implementation (Proc::ImplNames).
    static KESTRO_CONSTANT std::string KEY_TYPE_ID = "TypeId";
    /// Follows KEY_STREAMS in a path and precedes the type of the stream that is meant:
    /// `Streams/TypeId=audio/AudioCodec`.
    static KESTRO_CONSTANT std::string INDEX = "/TypeId=";

    static KESTRO_CONSTANT std::string STREAM_TYPE_AUDIO = "audio";
    static KESTRO_CONSTANT std::string STREAM_TYPE_VIDEO = "video";
    static KESTRO_CONSTANT std::string STREAM_TYPE_SUBTITLES_TEXT = "subtitle";

    IPreset() = delete;
};

}  // namespace Kestro::Conf
