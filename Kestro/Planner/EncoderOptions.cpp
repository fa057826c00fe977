#include "Kestro/Planner/EncoderOptions.h"

#include <algorithm>
#include <optional>

#include "Kestro/Conf/DiscRecord.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/FFWrapper/EncoderRecord.h"
#include "Kestro/Planner/FilterGraph.h"
#include "Kestro/Planner/Tree.h"

namespace Kestro::Planner {
namespace {

using Conf::DiscRecord;
using Conf::IFormatCodec;
using Conf::IFormatCodecVideo;
using Conf::StreamType;
using Core::Property;
using FFWrapper::EncoderRecord;

/// Options of one output stream: each is told to which stream it belongs.
class StreamOptions {
public:
    StreamOptions(std::vector<std::string>& arguments, std::size_t index)
        : arguments_(arguments), suffix_(":" + std::to_string(index)) {}

    void Add(const std::string& option, const std::string& value) {
        arguments_.push_back("-" + option + suffix_);
        arguments_.push_back(value);
    }
    void AddIfGiven(const std::string& option, const std::string& value) {
        if (!value.empty()) Add(option, value);
    }

private:
    std::vector<std::string>& arguments_;
    std::string suffix_;
};

/// disc: the one that is made, or null.
void AddBitrate(const PlannedStream& stream, const EncoderRecord& encoder, const Property& codec,
                const DiscRecord* disc, StreamOptions& options) {
    const bool isVariable = TextAt(codec, IFormatCodec::TAG_BITRATE_MODE) == IFormatCodec::TAG_BITRATE_MODE_VBR;
    if (IsByQuality(codec, &encoder)) {
        for (const auto& [option, value] : encoder.QualityOptions(*Integer(codec, IFormatCodec::TAG_QUALITY))) {
            options.Add(option, value);
        }
        return;
    }
    const auto bitrate = Integer(codec, IFormatCodec::TAG_BITRATE);
    if (!bitrate || *bitrate <= 0) return;
    options.Add("b", std::to_string(*bitrate));
    if (stream.kind->type != StreamType::Video || isVariable || !encoder.hasRateBuffer) return;
    // Constant: no second holds more, with two seconds' bits to balance.
    options.Add("maxrate", std::to_string(*bitrate));
    const int64_t buffer = 2 * std::min(*bitrate, IFormatCodecVideo::MAX_VIDEO_BITRATE);
    options.Add("bufsize", std::to_string(disc != nullptr ? std::min(buffer, disc->buffer) : buffer));
}

/// Empty when none is asked for.
std::string Profile(const Property& codec) {
    return TextAt(codec, Below(IFormatCodec::TAG_CODEC_OPTIONS_ENCODE, IFormatCodec::TAG_PROFILE));
}

void AddSettings(const PlannedStream& stream, const EncoderRecord& encoder, const Property& codec,
                 StreamOptions& options) {
    const auto option = [&](const std::string& tag) {
        return TextAt(codec, Below(IFormatCodec::TAG_CODEC_OPTIONS_ENCODE, tag));
    };
    const std::string profile = Profile(codec);
    options.AddIfGiven("preset", option(IFormatCodec::TAG_PRESET));
    options.AddIfGiven("tune", option(IFormatCodecVideo::TAG_X264_TUNE));
    options.AddIfGiven("profile",
                       encoder.profile != nullptr && *encoder.profile == profile ? encoder.profileWord : profile);
    if (stream.kind->type != StreamType::Video) return;
    options.AddIfGiven("pix_fmt", stream.pixels.format);
    const bool isTransparent = stream.source.hasAlpha && stream.pixels.format.empty();
    if (isTransparent && encoder.alphaOption != nullptr) options.Add(encoder.alphaOption, encoder.alphaValue);
    if (const auto frames = Integer(codec, IFormatCodecVideo::TAG_MAX_I_FRAME_INTERVAL); frames && *frames >= 0) {
        options.Add("g", std::to_string(*frames));
    }
    if (const auto frames = Integer(codec, IFormatCodecVideo::TAG_MAX_B_FRAME_SEQUENCE); frames && *frames >= 0) {
        options.Add("bf", std::to_string(*frames));
    }
    const auto threads = Integer(codec, IFormatCodec::TAG_THREAD_NUMBER);
    if (Flag(codec, IFormatCodec::TAG_UTILIZE_ALL_RESOURCES)) {
        options.Add("threads", "0");  // as many as there are cores
    } else if (threads && *threads > 0) {
        options.Add("threads", std::to_string(*threads));
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

/// As x265 takes it, after SMPTE ST 2086 and CTA-861.3.
std::string MasteringParameters(const MasteringDisplay& mastering) {
    std::string text = "master-display=";
    const char* const points[] = {"G", "B", "R", "WP"};
    for (std::size_t i = 0; i < 4; ++i) {
        text += std::string(points[i]) + "(" + std::to_string(mastering.chromaticities[2 * i]) + "," +
                std::to_string(mastering.chromaticities[2 * i + 1]) + ")";
    }
    text += "L(" + std::to_string(mastering.maxLuminance) + "," + std::to_string(mastering.minLuminance) + ")";
    if (mastering.maxContentLight == 0) return text;
    return text + ":max-cll=" + std::to_string(mastering.maxContentLight) + "," +
           std::to_string(mastering.maxAverageLight);
}

/// The parameters that x265 takes in a word of their own.
std::string X265Parameters(const PlannedStream& stream, int pass, const std::string& log) {
    std::string parameters;
    if (stream.source.mastering && stream.source.colour.IsHdr() && !stream.pixels.isToneMapped) {
        parameters = MasteringParameters(*stream.source.mastering);
    }
    if (pass == 0) return parameters;
    if (!parameters.empty()) parameters += ':';
    return parameters + "pass=" + std::to_string(pass) + ":stats=" + EscapedParameter(log);
}

/// pass: 0 when there is one alone.
void AddPass(const PlannedStream& stream, const EncoderRecord& encoder, int pass, const std::string& workFolder,
             StreamOptions& options) {
    const std::string log = workFolder + "/pass";
    if (encoder.passes == FFWrapper::Passes::X265Parameters) {
        options.AddIfGiven("x265-params", X265Parameters(stream, pass, log));
    } else if (pass != 0) {
        options.Add("pass", std::to_string(pass));
        options.Add("passlogfile", log);
    }
}

/// An encoder without a row has the pixel formats and profiles of its codec's best one, and no scale of quality.
EncoderRecord RecordOf(const PlannedStream& stream) {
    if (const EncoderRecord* own = EncoderRecord::Find(stream.encoder)) return *own;
    EncoderRecord record{.codecId = stream.codecId, .name = stream.encoder.c_str()};
    if (const EncoderRecord* usual = EncoderRecord::OfCodec(stream.codecId)) {
        record.pixelFormats = usual->pixelFormats;
        record.profile = usual->profile;
        record.profileWord = usual->profileWord;
    }
    return record;
}

}  // namespace

bool IsTwoPass(const Property& codec) {
    return TextAt(codec, IFormatCodec::TAG_MULTIPASS_ENCODING) == IFormatCodec::TAG_TWO_PASS_MODE;
}

bool IsByQuality(const Property& codec, const EncoderRecord* encoder) {
    // Where a variable bitrate is to keep its mean, or two passes share it out, the bitrate decides.
    return encoder != nullptr && encoder->quality != nullptr && Integer(codec, IFormatCodec::TAG_QUALITY) &&
           TextAt(codec, IFormatCodec::TAG_BITRATE_MODE) == IFormatCodec::TAG_BITRATE_MODE_VBR && !IsTwoPass(codec) &&
           !Flag(codec, Below(IFormatCodec::TAG_CODEC_OPTIONS_ENCODE, IFormatCodecVideo::TAG_APPROVED_VBR_MODE_ONLY));
}

void AddEncoderOptions(const Plan& plan, std::size_t planned, std::size_t index, const Pass& pass,
                       std::vector<std::string>& arguments) {
    const PlannedStream& stream = plan.streams[planned];
    const Property& codec = plan.CodecSettings(planned);
    const EncoderRecord encoder = RecordOf(stream);
    arguments.insert(arguments.end(), {"-map", "0:" + std::to_string(stream.source.index)});
    StreamOptions options(arguments, index);
    options.Add("c", stream.encoder);
    if (FFWrapper::IsExperimental(stream.encoder, Profile(codec))) options.Add("strict", "experimental");
    options.AddIfGiven("filter", FilterGraph(plan, planned));
    AddBitrate(stream, encoder, codec, DiscRecord::Find(plan.FormatSettings()), options);
    AddSettings(stream, encoder, codec, options);
    std::string flags;
    if (Flag(plan.FormatSettings(), IFormatCodec::TAG_GLOBAL_HEADER) && Flag(codec, IFormatCodec::TAG_GLOBAL_HEADER)) {
        flags += "+global_header";
    }
    if (stream.pixels.isInterlaced) flags += "+ildct+ilme";
    options.AddIfGiven("flags", flags);
    AddPass(stream, encoder, IsTwoPass(codec) ? pass.number : 0, pass.directory, options);
}

}  // namespace Kestro::Planner
