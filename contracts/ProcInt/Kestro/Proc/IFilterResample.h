#pragma once

#include <string>

#include "Kestro/Conf/ChannelLayout.h"
#include "Kestro/Conf/SampleFormats.h"
#include "Kestro/Constant.h"
#include "Kestro/Core/Property.h"
#include "Kestro/Export.h"

namespace Kestro::Proc {

/// The filter that converts audio to the rate, layout and sample format of the encoder.
class KESTRO_PROCINT_API IFilterResample {
public:
    static KESTRO_CONSTANT std::string CLASS_ID = "AudioResample";

    /// AudioResample { Resampler { TypeId = default, SampleRate integer, Layout text, SampleFmt text } }.
    /// sampleRate is in Hz and stored as it comes (-1: the source's). A layout or format without a record, such as
    /// Unknown and None, is stored as Conf::IFormatCodecAudio::TAG_CH_LAYOUT_UNKNOWN or TAG_SAMPLE_FORMAT_NONE.
    static Core::Property MakeSettings(Conf::ChannelLayout layout, int sampleRate, Conf::SampleFormats sampleFormat);

    IFilterResample() = delete;
};

}  // namespace Kestro::Proc
