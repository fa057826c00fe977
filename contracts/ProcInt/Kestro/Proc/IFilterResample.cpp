#include "Kestro/Proc/IFilterResample.h"

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Conf/LayoutRecord.h"
#include "Kestro/Conf/SampleFmtRecord.h"
#include "Kestro/Proc/ImplNames.h"
#include "Kestro/Proc/IResample.h"

namespace Kestro::Proc {

using Conf::IFormatCodecAudio;

Core::Property IFilterResample::MakeSettings(Conf::ChannelLayout layout, int sampleRate,
                                             Conf::SampleFormats sampleFormat) {
    const Conf::LayoutRecord* layoutRecord = Conf::LayoutRecord::Find(layout);
    const Conf::SampleFmtRecord* formatRecord = Conf::SampleFmtRecord::Find(sampleFormat);

    Core::Property settings(CLASS_ID);
    Core::Property& resampler = settings.SetChild(IResample::CLASS_ID);
    resampler.SetChild(Conf::IPreset::KEY_TYPE_ID, ImplNames::DEFAULT);
    resampler.SetChild(IFormatCodecAudio::TAG_SAMPLE_RATE, sampleRate);
    resampler.SetChild(IFormatCodecAudio::TAG_LAYOUT,
                       layoutRecord != nullptr ? layoutRecord->name : IFormatCodecAudio::TAG_CH_LAYOUT_UNKNOWN);
    resampler.SetChild(IFormatCodecAudio::TAG_SAMPLE_FORMAT,
                       formatRecord != nullptr ? formatRecord->name : IFormatCodecAudio::TAG_SAMPLE_FORMAT_NONE);
    return settings;
}

}  // namespace Kestro::Proc
