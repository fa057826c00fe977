#pragma once

#include "Kestro/Core/Property.h"
#include "Kestro/Planner/Export.h"

namespace Kestro::Planner {

/// The tree in which every path of every rule of a container, an encoder or a filter resolves (IValidationRule's first
/// and second names), and every key of a constraint under the node of its helper.
///
/// Of a format node  Format { Container = mp4 }  and a stream
///     { TypeId = audio, AudioCodec { CodecId = aac, BitRate }, AudioResample { Resampler { SampleRate } } }
/// it makes
///
///     Streams
///         0
///             TypeId = audio
///             AudioCodec { CodecId = aac, BitRate }
///             AudioResample { Resampler { SampleRate } }
///     AudioCodec { CodecId = aac, BitRate }                 the stream's nodes again: rules begin with their names
///     AudioResample { Resampler { SampleRate } }
///     Format
///         Container = mp4
///         Streams { 0 { ... } }                             and the list again, as containers keep it
///
/// so that `AudioResample/Resampler/SampleRate`, `Streams/TypeId=audio/AudioCodec/CodecId` and
/// `Format/Streams/TypeId=audio/AudioCodec/CodecId` are all there. A stream of a preset lacks what it leaves to its
/// source; rules whose settings are absent do not apply. Throws nothing of its own.
KESTRO_PLANNER_API Core::Property RuleTree(const Core::Property& format, const Core::Property& stream);

}  // namespace Kestro::Planner
