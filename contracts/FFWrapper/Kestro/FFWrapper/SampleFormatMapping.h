#pragma once

extern "C" {
#include <libavutil/samplefmt.h>
}

#include "Kestro/Conf/SampleFormats.h"
#include "Kestro/Export.h"

namespace Kestro::FFWrapper {

/// The sample format with FFmpeg's number; SampleFormats::None when there is none.
KESTRO_FFWRAPPER_API Conf::SampleFormats SampleFormatKestroFromFFMPEG(AVSampleFormat format);

}  // namespace Kestro::FFWrapper
