#pragma once

#include <span>
#include <string>

#include "Kestro/Conf/StreamType.h"
#include "Kestro/Export.h"

namespace Kestro::Conf {

/// What the vocabulary calls a kind of stream, and where presets and helpers keep its codec.
struct KESTRO_CONFINT_API StreamRecord {
    StreamType type;
    const std::string& typeId;          ///< IPreset::KEY_TYPE_ID of such a stream
    const std::string& codecKey;        ///< its codec node; also the registry type of its encoders, subtitles apart
    const std::string& formatCodecTag;  ///< the codec node's name in a container helper's CorrectFormatCodec

    /// The path of its codec's id from a preset's root, which is also the key of a container's constraint on codecs:
    /// `Streams/TypeId=audio/AudioCodec/CodecId`.
    std::string CodecIdPath() const;

    /// Whether the registry has helpers of its encoders: of video and audio it has, of subtitles not.
    bool HasHelpers() const { return type != StreamType::Subtitle; }

    static const StreamRecord& Find(StreamType type);
    /// The record with that KEY_TYPE_ID, or null.
    static const StreamRecord* Find(const std::string& typeId);
    /// Video, audio, subtitles.
    static std::span<const StreamRecord> All();
    /// Those that have helpers.
    static std::span<const StreamRecord> WithHelpers();
};

}  // namespace Kestro::Conf
