#include "Kestro/Conf/DataHelpers/Filters/DataHelperAudioResample.h"

#include "Kestro/Conf/DataHelpers/HelperErrors.h"
#include "Kestro/Conf/DataHelpers/LayoutNames.h"
#include "Kestro/Conf/DataHelpers/Sheet.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/SampleFmtRecord.h"
#include "Kestro/Proc/IFilterResample.h"
#include "Kestro/Proc/IResample.h"

namespace Kestro::Conf {

namespace {

constexpr int64_t kSampleRates[] = {DataHelperAudioResample::KEEP_SAMPLE_RATE,
                                    8'000,
                                    11'025,
                                    12'000,
                                    16'000,
                                    22'050,
                                    24'000,
                                    32'000,
                                    44'100,
                                    48'000,
                                    64'000,
                                    88'200,
                                    96'000};
std::string Path(const std::string& tag) { return Proc::IResample::CLASS_ID + Core::Property::SEPARATOR + tag; }

}  // namespace

DataHelperAudioResample::DataHelperAudioResample() {
    Constrain(Path(IFormatCodecAudio::TAG_LAYOUT), MakeConstraint(Texts{kResamplerLayouts}));
    Constrain(Path(IFormatCodecAudio::TAG_SAMPLE_RATE), MakeConstraint(Integers{kSampleRates}));
}

Core::Property DataHelperAudioResample::GetDefaultSettings() const {
    return Proc::IFilterResample::MakeSettings(ChannelLayout::Stereo, 44'100, SampleFormats::None);
}

void DataHelperAudioResample::ApplyPresetSettings(const Core::Property& source, Core::Property& target) const {
    const Core::Property& preset = source[Proc::IResample::CLASS_ID];
    const int64_t rate = preset[IFormatCodecAudio::TAG_SAMPLE_RATE].GetInt64();
    if (rate != KEEP_SAMPLE_RATE) target.SetChild(IFormatCodecAudio::TAG_SAMPLE_RATE, rate);
    const std::string& layout = preset[IFormatCodecAudio::TAG_LAYOUT].GetString();
    if (layout != IFormatCodecAudio::TAG_CH_LAYOUT_UNKNOWN) target.SetChild(IFormatCodecAudio::TAG_LAYOUT, layout);

    if (!target.ChildExists(IFormatCodecAudio::TAG_SAMPLE_FORMAT)) return;
    const std::string& format = target[IFormatCodecAudio::TAG_SAMPLE_FORMAT].GetString();
    if (format == IFormatCodecAudio::TAG_SAMPLE_FORMAT_NONE) return;
    const SampleFmtRecord* record = SampleFmtRecord::Find(format);
    if (record == nullptr) {
        ThrowHelper("Unknown sample format [" + format + "]", format,
                    boost::source_location("Kestro/Conf/DataHelpers/DataHelperAudioResample", __LINE__,
                                           BOOST_CURRENT_FUNCTION));
    }
    target.SetChild(IFormatCodecAudio::TAG_BITS_PER_SAMPLE, record->bitsPerSample);
}

}  // namespace Kestro::Conf
