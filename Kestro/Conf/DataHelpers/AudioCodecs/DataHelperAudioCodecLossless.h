#pragma once

#include <span>
#include <string>

#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"
#include "Kestro/Conf/SampleFormats.h"

namespace Kestro::Conf {

/// How much of the samples of a format, planar or packed, an encoder writes: 1 for all of their bits.
struct EncodedShare {
    SampleFormats format;
    double share;
};

/// Base of the encoders whose bitrate is not asked for but follows from the sound: it is written down once rate, layout
/// and sample format are settled.
class DataHelperAudioCodecLossless : public DataHelperCodecFFMPEG {
public:
    /// The check of the resampler's values, then the encoder's one bitrate mode, and the bitrate: sample rate times
    /// channels times the format's bits times its share. Without a rate, layout or sample format the bitrate is left as
    /// it is. Throws HelperException naming value and encoder for one that the encoder does not take.
    void CorrectFormatCodec(Core::Property& settings) const override;

protected:
    /// The shares outlive the helper. The sheet's formats are those of the shares, and its mode is its default.
    DataHelperAudioCodecLossless(const CodecSheet& sheet, const std::string& codecId,
                                 std::span<const EncodedShare> shares);

private:
    std::span<const EncodedShare> shares_;
};

}  // namespace Kestro::Conf
