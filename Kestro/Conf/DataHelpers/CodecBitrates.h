#pragma once

#include "Kestro/Conf/DataHelpers/CodecSheet.h"
#include "Kestro/Core/Property.h"

/// The bitrates of audio encoders that depend on the audio, in a codec node that the encoder's rules have accepted.
namespace Kestro::Conf {

/// Puts in place of the bitrate the offered one that is nearest to it within the limits of the sample rate. Without a
/// bitrate, a sample rate, or a layout where limits are per channel, nothing changes.
void HoldToBitrateLimits(const CodecSheet& sheet, Core::Property& settings);

/// Writes the bitrate of a lossless encoder: sample rate times channels times the format's bits times its share.
/// Without a sample rate, layout or sample format nothing changes.
void WriteLosslessBitrate(const CodecSheet& sheet, Core::Property& settings);

}  // namespace Kestro::Conf
