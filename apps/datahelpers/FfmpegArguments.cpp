#include "FfmpegArguments.h"

extern "C" {
#include <libavcodec/avcodec.h>
}

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Proc/IFilterAudioFormatter.h"
#include "Kestro/Proc/IFilterAudioVolume.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/Proc/IResize.h"

#include "Disc.h"
#include "Muxer.h"
#include "Quality.h"
#include "Tree.h"

namespace App {
namespace {

using Kestro::Conf::IFormatCodec;
using Kestro::Conf::IFormatCodecAudio;
using Kestro::Conf::IFormatCodecVideo;
using Kestro::Conf::IFormatFile;
using Kestro::Conf::StreamType;
using Kestro::Core::Property;
using Kestro::Proc::IFilterAudioFormatter;
using Kestro::Proc::IFilterAudioVolume;
using Kestro::Proc::IFilterResize;
using Kestro::Proc::IResize;
using Kestro::Proc::SettingsResizer;
using Ratio = boost::rational<int64_t>;

std::string Number(int64_t value) { return std::to_string(value); }

std::string Decimal(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.3f", value);
    return text;
}

std::string Text(const Ratio& ratio) { return Number(ratio.numerator()) + "/" + Number(ratio.denominator()); }

std::optional<int64_t> Integer(const Property& node, const std::string& path) {
    const Property* found = node.FindByPath(path);
    return found != nullptr ? std::optional(found->GetInt64()) : std::nullopt;
}

bool Flag(const Property& node, const std::string& path) {
    const Property* found = node.FindByPath(path);
    return found != nullptr && found->GetBool();
}

void AddFilter(std::string& chain, const std::string& filter) {
    if (!chain.empty()) chain += ',';
    chain += filter;
}

int64_t Even(double side) { return std::max<int64_t>(2, 2 * std::llround(side / 2.0)); }

/// A picture's size, and the shape in which it is shown.
struct Picture {
    int64_t width;
    int64_t height;
    Ratio pixelShape;
    double Shape() const {
        return static_cast<double>(width) * boost::rational_cast<double>(pixelShape) / static_cast<double>(height);
    }
};

/// How the source's picture comes into a frame of another shape.
std::string ScaleChain(const Picture& source, const Picture& frame, SettingsResizer::Fit fit,
                       const std::string& scaler) {
    // Proportions nearer than this are the same to the eye.
    constexpr double kSameShape = 1.02;
    // SmartFit cuts off at most this part of a side.
    constexpr double kMostCut = 0.1;
    const double ratio = source.Shape() / frame.Shape();
    const double excess = std::max(ratio, 1.0 / ratio);
    const auto scale = [&](int64_t width, int64_t height) {
        return "scale=w=" + Number(width) + ":h=" + Number(height) + ":flags=" + scaler;
    };
    const auto crop = [](int64_t width, int64_t height) { return "crop=w=" + Number(width) + ":h=" + Number(height); };
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
            return scale(innerWidth, innerHeight) + ",pad=w=" + Number(frame.width) + ":h=" + Number(frame.height) +
                   ":x=(ow-iw)/2:y=(oh-ih)/2";
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

std::string VideoFilters(const PlannedStream& stream, const Property& settings, const Property& codec) {
    std::string chain;
    const Picture source{stream.source.width, stream.source.height, stream.source.sampleAspectRatio};
    const Picture frame{
        codec[IFormatCodecVideo::TAG_WIDTH].GetInt64(), codec[IFormatCodecVideo::TAG_HEIGHT].GetInt64(),
        Ratio(codec[IFormatCodecVideo::TAG_ASPECTX].GetInt64(), codec[IFormatCodecVideo::TAG_ASPECTY].GetInt64())};
    if (source.width != frame.width || source.height != frame.height || source.pixelShape != frame.pixelShape) {
        SettingsResizer resizer;
        if (settings.ChildExists(IFilterResize::CLASS_ID)) {
            resizer = IFilterResize::Property2Settings(settings[IFilterResize::CLASS_ID]);
        }
        const bool isCustom = resizer.frameSizeMode == SettingsResizer::FrameSizeMode::Custom;
        const std::string scaler = TextAt(settings, IFilterResize::CLASS_ID + Property::SEPARATOR + IResize::CLASS_ID +
                                                        Property::SEPARATOR + IResize::METHOD);
        AddFilter(chain, ScaleChain(source, frame, isCustom ? resizer.fit : SettingsResizer::Fit::Stretch,
                                    scaler.empty() ? IResize::METHOD_BICUBIC : scaler));
        AddFilter(chain, "setsar=" + Text(frame.pixelShape));
    }
    const Ratio fps = codec[IFormatCodecVideo::TAG_FPS].GetRatio();
    if (fps != stream.source.fps && !stream.source.isCover) AddFilter(chain, "fps=" + Text(fps));
    return chain;
}

std::string AudioFilters(const PlannedStream& stream, const Property& settings, const Property& codec) {
    std::string chain;
    const auto volume =
        Integer(settings, IFilterAudioVolume::CLASS_ID + Property::SEPARATOR + IFilterAudioVolume::VOLUME_VALUE);
    if (volume && *volume != 100) AddFilter(chain, "volume=" + Decimal(static_cast<double>(*volume) / 100.0));
    const int64_t rate = codec[IFormatCodecAudio::TAG_SAMPLE_RATE].GetInt64();
    if (rate != stream.source.sampleRate) AddFilter(chain, "aresample=" + Number(rate));
    std::string format =
        "aformat=sample_rates=" + Number(rate) + ":channel_layouts=" + codec[IFormatCodecAudio::TAG_LAYOUT].GetString();
    const std::string samples = TextAt(codec, IFormatCodecAudio::TAG_SAMPLE_FORMAT);
    if (!samples.empty() && samples != IFormatCodecAudio::TAG_SAMPLE_FORMAT_NONE) format += ":sample_fmts=" + samples;
    AddFilter(chain, format);
    const auto packet = Integer(
        settings, IFilterAudioFormatter::CLASS_ID + Property::SEPARATOR + IFilterAudioFormatter::PACKET_DURATION);
    if (packet && *packet > 0) {
        const double samplesInPacket = static_cast<double>(rate) * static_cast<double>(*packet) / 1e6;
        AddFilter(chain,
                  "asetnsamples=n=" + Number(std::clamp<int64_t>(std::llround(samplesInPacket), 1, rate)) + ":p=0");
    }
    return chain;
}

struct ProfileFormat {
    const std::string& profile;
    const char* pixelFormat;
};

/// The pixels that an encoder's profile stores, or that players of a codec show; nothing where the encoder's nearest to
/// the source's will do. height: lines of the frame.
std::string PixelFormat(const std::string& codecId, const std::string& profile, int64_t height) {
    static const ProfileFormat kFormats[] = {
        {IFormatCodecVideo::TAG_X264_PROFILE_HIGH10, "yuv420p10le"},
        {IFormatCodecVideo::TAG_X264_PROFILE_HIGH422, "yuv422p"},
        {IFormatCodecVideo::TAG_X264_PROFILE_HIGH444, "yuv444p"},
    };
    static const std::string* const kAlways420[] = {
        &IFormatCodecVideo::CODEC_ID_H264, &IFormatCodecVideo::CODEC_ID_H265, &IFormatCodecVideo::CODEC_ID_VP9,
        &IFormatCodecVideo::CODEC_ID_MPEG2VIDEO, &IFormatCodecVideo::CODEC_ID_THEORA};
    if (codecId == IFormatCodecVideo::CODEC_ID_DVVIDEO) {  // each system has its own (IEC 61834, SMPTE 370M)
        return height == 480 ? "yuv411p" : height == 576 ? "yuv420p" : "yuv422p";
    }
    if (std::ranges::none_of(kAlways420, [&](const std::string* id) { return *id == codecId; })) return {};
    const auto row =
        std::ranges::find_if(kFormats, [&](const ProfileFormat& format) { return format.profile == profile; });
    return row != std::end(kFormats) ? row->pixelFormat : "yuv420p";
}

/// The encoder's own word for a profile.
std::string EncoderProfile(const std::string& profile) {
    return profile == IFormatCodecVideo::TAG_X265_PROFILE_MAIN ? "main" : profile;
}

/// Options of one output stream: each is told to which stream it belongs.
class StreamOptions {
public:
    StreamOptions(ArgumentList& arguments, std::size_t index)
        : arguments_(arguments), suffix_(":" + std::to_string(index)) {}

    void Add(const std::string& option, const std::string& value) {
        arguments_.push_back("-" + option + suffix_);
        arguments_.push_back(value);
    }
    void AddIfGiven(const std::string& option, const std::string& value) {
        if (!value.empty()) Add(option, value);
    }

private:
    ArgumentList& arguments_;
    std::string suffix_;
};

bool IsTwoPass(const Property& codec) {
    return TextAt(codec, IFormatCodec::TAG_MULTIPASS_ENCODING) == IFormatCodec::TAG_TWO_PASS_MODE;
}

/// SVT-AV1 has a mean bitrate alone, and refuses a highest one beside it.
bool HasRateBuffer(const std::string& encoder) { return encoder != "libsvtav1"; }

/// disc: the one that is made, or null.
void AddBitrate(const PlannedStream& stream, const Property& codec, const Disc* disc, StreamOptions& options) {
    const bool isVariable = TextAt(codec, IFormatCodec::TAG_BITRATE_MODE) == IFormatCodec::TAG_BITRATE_MODE_VBR;
    const auto quality = Integer(codec, IFormatCodec::TAG_QUALITY);
    // The preset's own bitrate, and the one that two passes share out, are asked for as such.
    const bool isByBitrate = IsTwoPass(codec) || Flag(codec, Below(IFormatCodec::TAG_CODEC_OPTIONS_ENCODE,
                                                                   IFormatCodecVideo::TAG_APPROVED_VBR_MODE_ONLY));
    if (isVariable && quality && !isByBitrate) {
        const auto given = QualityOptions(stream.encoder, *quality);
        for (const auto& [option, value] : given) options.Add(option, value);
        if (!given.empty()) return;
    }
    const auto bitrate = Integer(codec, IFormatCodec::TAG_BITRATE);
    if (!bitrate || *bitrate <= 0) return;
    options.Add("b", Number(*bitrate));
    if (stream.kind->type != StreamType::Video || isVariable || !HasRateBuffer(stream.encoder)) return;
    // Constant: no second holds more, with two seconds' bits to balance.
    options.Add("maxrate", Number(*bitrate));
    const int64_t buffer = 2 * std::min(*bitrate, IFormatCodecVideo::MAX_VIDEO_BITRATE);
    options.Add("bufsize", Number(disc != nullptr ? std::min(buffer, disc->buffer) : buffer));
}

/// Empty when none is asked for.
std::string Profile(const Property& codec) {
    return TextAt(codec, Below(IFormatCodec::TAG_CODEC_OPTIONS_ENCODE, IFormatCodec::TAG_PROFILE));
}

void AddEncoderOptions(const PlannedStream& stream, const Property& codec, StreamOptions& options) {
    const auto option = [&](const std::string& tag) {
        return TextAt(codec, Below(IFormatCodec::TAG_CODEC_OPTIONS_ENCODE, tag));
    };
    const std::string profile = Profile(codec);
    options.AddIfGiven("preset", option(IFormatCodec::TAG_PRESET));
    options.AddIfGiven("tune", option(IFormatCodecVideo::TAG_X264_TUNE));
    options.AddIfGiven("profile", EncoderProfile(profile));
    if (stream.kind->type != StreamType::Video) return;
    options.AddIfGiven("pix_fmt",
                       PixelFormat(stream.codecId, profile, codec[IFormatCodecVideo::TAG_HEIGHT].GetInt64()));
    if (const auto frames = Integer(codec, IFormatCodecVideo::TAG_MAX_I_FRAME_INTERVAL); frames && *frames >= 0) {
        options.Add("g", Number(*frames));
    }
    if (const auto frames = Integer(codec, IFormatCodecVideo::TAG_MAX_B_FRAME_SEQUENCE); frames && *frames >= 0) {
        options.Add("bf", Number(*frames));
    }
    const auto threads = Integer(codec, IFormatCodec::TAG_THREAD_NUMBER);
    if (Flag(codec, IFormatCodec::TAG_UTILIZE_ALL_RESOURCES)) {
        options.Add("threads", "0");  // as many as there are cores
    } else if (threads && *threads > 0) {
        options.Add("threads", Number(*threads));
    }
    if (Flag(codec, IFormatCodecVideo::TAG_COVER_FLAG)) options.Add("disposition", "attached_pic");
}

/// The characters that part the parameters of x265 lose their meaning.
std::string EscapedParameter(const std::string& value) {
    std::string escaped;
    for (const char c : value) {
        if (c == ':' || c == '=' || c == '\\' || c == '\'') escaped += '\\';
        escaped += c;
    }
    return escaped;
}

void AddPass(const PlannedStream& stream, int pass, const std::string& passDirectory, StreamOptions& options) {
    const std::string log = passDirectory + "/pass";
    if (stream.encoder == "libx265") {  // It takes no -pass.
        options.Add("x265-params", "pass=" + std::to_string(pass) + ":stats=" + EscapedParameter(log));
        return;
    }
    options.Add("pass", std::to_string(pass));
    options.Add("passlogfile", log);
}

/// pass: 0 when the stream is made in one.
void AddStream(const Plan& plan, std::size_t planned, std::size_t index, int pass, const std::string& passDirectory,
               ArgumentList& arguments) {
    const PlannedStream& stream = plan.streams[planned];
    const Property& settings = plan.StreamSettings(planned);
    const Property& codec = plan.CodecSettings(planned);
    arguments.insert(arguments.end(), {"-map", "0:" + std::to_string(stream.source.index)});
    StreamOptions options(arguments, index);
    options.Add("c", stream.encoder);
    const AVCodec* encoder = avcodec_find_encoder_by_name(stream.encoder.c_str());
    const bool isExperimental = encoder != nullptr && (encoder->capabilities & AV_CODEC_CAP_EXPERIMENTAL) != 0;
    if (isExperimental || Profile(codec) == IFormatCodecAudio::TAG_AAC_PROFILE_LTP) {
        options.Add("strict", "experimental");
    }
    options.AddIfGiven("filter", stream.kind->type == StreamType::Video ? VideoFilters(stream, settings, codec)
                                                                        : AudioFilters(stream, settings, codec));
    AddBitrate(stream, codec, Disc::Find(plan.FormatSettings()), options);
    AddEncoderOptions(stream, codec, options);
    if (Flag(plan.FormatSettings(), IFormatCodec::TAG_GLOBAL_HEADER) && Flag(codec, IFormatCodec::TAG_GLOBAL_HEADER)) {
        options.Add("flags", "+global_header");
    }
    if (pass != 0 && IsTwoPass(codec)) AddPass(stream, pass, passDirectory, options);
}

/// How the files of a picture codec end, where that is not its name.
struct Extension {
    const std::string& codecId;
    const char* extension;
};

std::string PictureExtension(const Plan& plan) {
    static const Extension kExtensions[] = {
        {IFormatCodecVideo::CODEC_ID_MJPEG, "jpg"},  {IFormatCodecVideo::CODEC_ID_JPEG2000, "jp2"},
        {IFormatCodecVideo::CODEC_ID_JPEGLS, "jls"}, {IFormatCodecVideo::CODEC_ID_TARGA, "tga"},
        {IFormatCodecVideo::CODEC_ID_TIFF, "tif"},
    };
    const std::string& codecId = plan.streams.front().codecId;
    const auto row =
        std::ranges::find_if(kExtensions, [&](const Extension& entry) { return entry.codecId == codecId; });
    return row != std::end(kExtensions) ? row->extension : codecId;
}

/// A name in which the muxer finds no number.
std::string EscapedPattern(const std::string& name) {
    std::string escaped;
    for (const char c : name) escaped += c == '%' ? "%%" : std::string(1, c);
    return escaped;
}

ArgumentList InputArguments(const Plan& plan) {
    ArgumentList arguments{"-hide_banner", "-nostdin",      "-y", "-loglevel", "error", "-progress",
                           "pipe:1",       "-stats_period", "0.2"};
    if (ReadsPatterns(plan.input.demuxer)) {
        arguments.insert(arguments.end(), {"-f", plan.input.demuxer, "-pattern_type", "none"});
    }
    arguments.insert(arguments.end(), {"-i", FileUrl(plan.input.path)});
    return arguments;
}

}  // namespace

bool IsTwoPass(const Plan& plan) {
    for (std::size_t i = 0; i < plan.streams.size(); ++i) {
        if (IsTwoPass(plan.CodecSettings(i))) return true;
    }
    return false;
}

std::string PictureName(const Plan& plan, int number) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%06d.", number);
    return digits + PictureExtension(plan);
}

std::vector<ArgumentList> FfmpegRuns(const Plan& plan, const std::string& output, const std::string& passDirectory,
                                     bool isSequence) {
    std::vector<ArgumentList> runs;
    const bool twoPass = IsTwoPass(plan);
    if (twoPass) {
        ArgumentList& first = runs.emplace_back(InputArguments(plan));
        std::size_t index = 0;
        for (std::size_t i = 0; i < plan.streams.size(); ++i) {
            if (IsTwoPass(plan.CodecSettings(i))) AddStream(plan, i, index++, 1, passDirectory, first);
        }
        first.insert(first.end(), {"-f", "null", "-"});
    }
    ArgumentList& last = runs.emplace_back(InputArguments(plan));
    for (std::size_t i = 0; i < plan.streams.size(); ++i) AddStream(plan, i, i, twoPass ? 2 : 0, passDirectory, last);

    const std::string muxer = MuxerName(plan.FormatSettings());
    if (Flag(plan.FormatSettings(), IFormatFile::TAG_PROGRESSIVE_READ) && HasMovableIndex(muxer)) {
        last.insert(last.end(), {"-movflags", "+faststart"});
    }
    if (isSequence) {
        last.insert(last.end(), {"-f", muxer, FileUrl(EscapedPattern(output) + "/%06d." + PictureExtension(plan))});
        return runs;
    }
    // The one picture goes under the name as it is, whatever pattern it may look like.
    if (IsImageMuxer(muxer)) last.insert(last.end(), {"-frames:v", "1", "-update", "1"});
    last.insert(last.end(), {"-f", muxer, FileUrl(output)});
    return runs;
}

}  // namespace App
