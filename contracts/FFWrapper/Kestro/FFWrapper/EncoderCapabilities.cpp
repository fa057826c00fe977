#include "Kestro/FFWrapper/EncoderCapabilities.h"

#include <cstddef>
#include <span>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavutil/channel_layout.h>
#include <libavutil/pixdesc.h>
}

#include "Kestro/FFWrapper/EncoderRecord.h"
#include "Kestro/FFWrapper/SampleFormatMapping.h"
#include "Kestro/FFWrapper/SupportedValues.h"

namespace Kestro::FFWrapper {

std::optional<EncoderCapabilities> EncoderCapabilities::Find(const std::string& encoderName) {
    const AVCodec* encoder = avcodec_find_encoder_by_name(encoderName.c_str());
    if (encoder == nullptr) return std::nullopt;

    EncoderCapabilities capabilities;
    const auto rates = SampleRates(*encoder);
    capabilities.sampleRates.assign(rates.begin(), rates.end());
    for (const AVSampleFormat format : SampleFormats(*encoder)) {
        capabilities.sampleFormats.push_back(SampleFormatKestroFromFFMPEG(format));
    }
    for (const AVChannelLayout& layout : Layouts(*encoder)) {
        if (layout.order == AV_CHANNEL_ORDER_NATIVE) capabilities.channelLayouts.push_back(layout.u.mask);
    }
    for (const AVPixelFormat format : PixelFormats(*encoder)) {
        if (const char* name = av_get_pix_fmt_name(format)) capabilities.pixelFormats.emplace_back(name);
    }
    if (const EncoderRecord* record = EncoderRecord::Find(encoderName)) {
        for (const std::string* profile : record->profiles) capabilities.profiles.push_back(*profile);
    }
    for (const AVRational rate : FrameRates(*encoder)) capabilities.frameRates.emplace_back(rate.num, rate.den);
    return capabilities;
}

}  // namespace Kestro::FFWrapper
