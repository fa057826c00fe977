#include "Kestro/Planner/FilterGraph.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/LayoutRecord.h"
#include "Kestro/Conf/SampleFmtRecord.h"
#include "Kestro/FFWrapper/EncoderRecord.h"
#include "Kestro/FFWrapper/MuxerRecord.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Text.h"
#include "Kestro/Planner/Tree.h"
#include "Kestro/Proc/IFilterAudioFormatter.h"
#include "Kestro/Proc/IFilterAudioVolume.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/Proc/IResize.h"

namespace Kestro::Planner {
namespace {

using Conf::IFormatCodecAudio;
using Conf::IFormatCodecVideo;
using Core::Property;
using Proc::IFilterAudioFormatter;
using Proc::IFilterAudioVolume;
using Proc::IFilterResize;
using Proc::IResize;
using Proc::SettingsResizer;
using Ratio = boost::rational<int64_t>;

std::string Decimal(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.3f", value);
    return text;
}

const std::string& Known(bool isKnown, const std::string& text, const char* what) {
    if (isKnown) return text;
    throw NotAcceptable({.code = ProblemCode::InvalidPlan,
                         .message = "\"" + Printable(text) + "\" is no " + what + ".",
                         .value = text});
}

const std::string& KnownLayout(const std::string& name) {
    return Known(Conf::LayoutRecord::Find(name) != nullptr, name, "channel layout");
}

const std::string& KnownSampleFormat(const std::string& name) {
    return Known(Conf::SampleFmtRecord::Find(name) != nullptr, name, "sample format");
}

const std::string& KnownScaler(const std::string& name) {
    static const std::string* const kScalers[] = {&IResize::METHOD_POINT, &IResize::METHOD_FAST_BILINEAR,
                                                  &IResize::METHOD_BILINEAR, &IResize::METHOD_BICUBIC};
    if (name.empty()) return IResize::METHOD_BICUBIC;
    return Known(std::ranges::any_of(kScalers, [&](const std::string* scaler) { return *scaler == name; }), name,
                 "scaler");
}

void AddFilter(std::string& chain, const std::string& filter) {
    if (filter.empty()) return;
    if (!chain.empty()) chain += ',';
    chain += filter;
}

int64_t Even(double side) { return std::max<int64_t>(2, 2 * std::llround(side / 2.0)); }

/// A picture's size, and the shape in which it is shown.
struct Picture {
    int64_t width;
    int64_t height;
    Ratio sampleAspectRatio;
    double Shape() const {
        return static_cast<double>(width) * boost::rational_cast<double>(sampleAspectRatio) /
               static_cast<double>(height);
    }
};

/// How the source's picture comes into a frame of another shape.
std::string ScaleChain(const Picture& source, const Picture& frame, SettingsResizer::Fit fit, const std::string& scaler,
                       bool isInterlaced) {
    // Proportions nearer than this are the same to the eye.
    constexpr double kSameShape = 1.02;
    // SmartFit cuts off at most this part of a side.
    constexpr double kMostCut = 0.1;
    const double ratio = source.Shape() / frame.Shape();
    const double excess = std::max(ratio, 1.0 / ratio);
    const auto scale = [&](int64_t width, int64_t height) {
        return "scale=w=" + std::to_string(width) + ":h=" + std::to_string(height) + ":flags=" + scaler +
               (isInterlaced ? ":interl=1" : "");
    };
    const auto crop = [](int64_t width, int64_t height) {
        return "crop=w=" + std::to_string(width) + ":h=" + std::to_string(height);
    };
    const auto width = static_cast<double>(frame.width);
    const auto height = static_cast<double>(frame.height);
    const bool isWider = ratio > 1.0;

    if (fit == SettingsResizer::Fit::Auto) {
        fit = excess <= kSameShape ? SettingsResizer::Fit::Stretch : SettingsResizer::Fit::Letterbox;
    }
    switch (fit) {
        case SettingsResizer::Fit::Crop: {
            const int64_t fullWidth = isWider ? Even(width * excess) : frame.width;
            const int64_t fullHeight = isWider ? frame.height : Even(height * excess);
            return scale(fullWidth, fullHeight) + "," + crop(frame.width, frame.height);
        }
        case SettingsResizer::Fit::Letterbox: {
            const int64_t innerWidth = isWider ? frame.width : std::min(frame.width, Even(width / excess));
            const int64_t innerHeight = isWider ? std::min(frame.height, Even(height / excess)) : frame.height;
            return scale(innerWidth, innerHeight) + ",pad=w=" + std::to_string(frame.width) +
                   ":h=" + std::to_string(frame.height) + ":x=(ow-iw)/2:y=(oh-ih)/2";
        }
        case SettingsResizer::Fit::SmartFit: {
            const double kept = std::max(1.0 - kMostCut, 1.0 / excess);
            const int64_t keptWidth = isWider ? Even(static_cast<double>(source.width) * kept) : source.width;
            const int64_t keptHeight = isWider ? source.height : Even(static_cast<double>(source.height) * kept);
            return crop(std::min(keptWidth, source.width), std::min(keptHeight, source.height)) + "," +
                   scale(frame.width, frame.height);
        }
        case SettingsResizer::Fit::Auto:
        case SettingsResizer::Fit::Stretch:
        case SettingsResizer::Fit::UpTo:
            break;
    }
    return scale(frame.width, frame.height);
}

/// From PQ or HLG in BT.2020 to BT.709, by light: linear, in wide numbers, the brightest parts rolled off.
std::string ToneMapping(const Colour& colour) {
    const std::string transfer = colour.transfer == "smpte2084" ? "smpte2084" : "arib-std-b67";
    return "zscale=tin=" + transfer +
           ":pin=bt2020:min=2020_ncl:t=linear:npl=100,format=gbrpf32le,zscale=p=bt709,tonemap=tonemap=hable:desat=0,"
           "zscale=t=bt709:m=bt709:r=tv,format=yuv420p";
}

/// What brings the pixels to the matrix of BT.601; nothing where they have it, or nobody knows what they have.
std::string ToBt601(const PlannedStream& stream) {
    const std::string matrix = stream.pixels.isToneMapped ? "bt709" : stream.source.colour.matrix;
    for (const char* same : {"", "bt470bg", "smpte170m", "gbr"}) {
        if (matrix == same) return {};
    }
    return "scale=out_color_matrix=bt601,setparams=colorspace=bt470bg";
}

std::string VideoFilters(const PlannedStream& stream, const Property& settings, const Property& codec) {
    std::string chain;
    if (stream.pixels.isDeinterlaced) AddFilter(chain, "bwdif=mode=send_frame");
    if (stream.pixels.isInterlaced) {
        AddFilter(chain, stream.source.isBottomFieldFirst ? "setfield=mode=bff" : "setfield=mode=tff");
    }
    if (stream.pixels.isToneMapped) AddFilter(chain, ToneMapping(stream.source.colour));
    const Picture source{stream.source.width, stream.source.height, stream.source.sampleAspectRatio};
    const Picture frame{
        codec[IFormatCodecVideo::TAG_WIDTH].GetInt64(), codec[IFormatCodecVideo::TAG_HEIGHT].GetInt64(),
        Ratio(codec[IFormatCodecVideo::TAG_ASPECTX].GetInt64(), codec[IFormatCodecVideo::TAG_ASPECTY].GetInt64())};
    if (source.width != frame.width || source.height != frame.height ||
        source.sampleAspectRatio != frame.sampleAspectRatio) {
        SettingsResizer resizer;
        if (settings.ChildExists(IFilterResize::CLASS_ID)) {
            resizer = IFilterResize::Property2Settings(settings[IFilterResize::CLASS_ID]);
        }
        const bool isCustom = resizer.frameSizeMode == SettingsResizer::FrameSizeMode::Custom;
        const std::string scaler =
            TextAt(settings, Below(Below(IFilterResize::CLASS_ID, IResize::CLASS_ID), IResize::METHOD));
        AddFilter(chain, ScaleChain(source, frame, isCustom ? resizer.fit : SettingsResizer::Fit::Stretch,
                                    KnownScaler(scaler), stream.pixels.isInterlaced));
        AddFilter(chain, "setsar=" + RatioText(frame.sampleAspectRatio));
    }
    const Ratio fps = codec[IFormatCodecVideo::TAG_FPS].GetRatio();
    if (fps != stream.source.fps && !stream.source.isCover) AddFilter(chain, "fps=" + RatioText(fps));
    const FFWrapper::EncoderRecord* encoder = FFWrapper::EncoderRecord::Find(stream.encoder);
    if (encoder != nullptr && encoder->isBt601) AddFilter(chain, ToBt601(stream));
    return chain;
}

std::string AudioFilters(const PlannedStream& stream, const Property& settings, const Property& codec, bool isFilled) {
    std::string chain;
    const auto volume = Integer(settings, Below(IFilterAudioVolume::CLASS_ID, IFilterAudioVolume::VOLUME_VALUE));
    if (volume && *volume != 100) AddFilter(chain, "volume=" + Decimal(static_cast<double>(*volume) / 100.0));
    const int64_t rate = codec[IFormatCodecAudio::TAG_SAMPLE_RATE].GetInt64();
    std::string resample = rate != stream.source.sampleRate ? std::to_string(rate) : std::string();
    if (isFilled) resample += std::string(resample.empty() ? "" : ":") + "async=1:first_pts=0";
    if (!resample.empty()) AddFilter(chain, "aresample=" + resample);
    std::string format = "aformat=sample_rates=" + std::to_string(rate) +
                         ":channel_layouts=" + KnownLayout(codec[IFormatCodecAudio::TAG_LAYOUT].GetString());
    const std::string samples = TextAt(codec, IFormatCodecAudio::TAG_SAMPLE_FORMAT);
    if (!samples.empty() && samples != IFormatCodecAudio::TAG_SAMPLE_FORMAT_NONE)
        format += ":sample_fmts=" + KnownSampleFormat(samples);
    AddFilter(chain, format);
    const auto packet =
        Integer(settings, Below(IFilterAudioFormatter::CLASS_ID, IFilterAudioFormatter::PACKET_DURATION));
    if (packet && *packet > 0) {
        const double samplesInPacket = static_cast<double>(rate) * static_cast<double>(*packet) / 1e6;
        AddFilter(chain, "asetnsamples=n=" +
                             std::to_string(std::clamp<int64_t>(std::llround(samplesInPacket), 1, rate)) + ":p=0");
    }
    return chain;
}

}  // namespace

std::string FilterGraph(const Plan& plan, std::size_t stream) {
    const PlannedStream& planned = plan.streams[stream];
    const Property& settings = plan.StreamSettings(stream);
    const Property& codec = plan.CodecSettings(stream);
    if (planned.kind->type == Conf::StreamType::Video) return VideoFilters(planned, settings, codec);
    // Where a file has no timestamps, sound that comes late or has holes keeps step with the picture by silence.
    const bool hasPicture = std::ranges::any_of(plan.streams, [](const PlannedStream& other) {
        return other.kind->type == Conf::StreamType::Video && !other.source.isCover;
    });
    const bool isFilled = hasPicture && !FFWrapper::MuxerRecord::Find(plan.muxer).hasTimestamps;
    return AudioFilters(planned, settings, codec, isFilled);
}

}  // namespace Kestro::Planner
