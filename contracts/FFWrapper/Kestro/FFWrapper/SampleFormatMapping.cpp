#include "Kestro/FFWrapper/SampleFormatMapping.h"

#include "Kestro/Conf/SampleFmtRecord.h"

namespace Kestro::FFWrapper {

static_assert(static_cast<int>(Conf::SampleFormats::U8) == AV_SAMPLE_FMT_U8 &&
                  static_cast<int>(Conf::SampleFormats::Dblp) == AV_SAMPLE_FMT_DBLP &&
                  static_cast<int>(Conf::SampleFormats::S64p) == AV_SAMPLE_FMT_S64P,
              "SampleFormats has FFmpeg's numbers");

Conf::SampleFormats SampleFormatKestroFromFFMPEG(AVSampleFormat format) {
    const Conf::SampleFmtRecord* record = Conf::SampleFmtRecord::Find(static_cast<Conf::SampleFormats>(format));
    return record != nullptr ? record->code : Conf::SampleFormats::None;
}

}  // namespace Kestro::FFWrapper
