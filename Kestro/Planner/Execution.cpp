#include "Kestro/Planner/Execution.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/LayoutRecord.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/FFWrapper/MuxerNames.h"
#include "Kestro/FFWrapper/MuxerRecord.h"
#include "Kestro/FFWrapper/SubtitleKinds.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Probe.h"
#include "Kestro/Planner/Text.h"

namespace Kestro::Planner {
namespace {

using Conf::IFormatCodecAudio;
using Conf::IFormatCodecVideo;
using Conf::StreamType;
using Core::Property;

int Channels(const std::string& layout) {
    const auto* record = Conf::LayoutRecord::Find(layout);
    return record != nullptr ? record->channels : 0;
}

/// Within what a container's clock makes of a rate: far less than lies between 24 and 24000/1001.
bool IsSameRate(const boost::rational<int64_t>& planned, const boost::rational<int64_t>& found) {
    const auto rate = boost::rational_cast<double>(planned);
    return std::abs(boost::rational_cast<double>(found) - rate) <= 0.0005 * rate;
}

std::string Known(int64_t value) { return value > 0 ? std::to_string(value) : std::string(); }

/// Compares one stream with its settings.
class Comparison {
public:
    Comparison(std::size_t number, const Property& codec, std::vector<std::string>& differences)
        : name_("Stream " + std::to_string(number) + ": the "), codec_(codec), differences_(differences) {}

    /// found: empty when it is not known.
    void Of(const char* what, const std::string& tag, const std::string& found) {
        if (!codec_.ChildExists(tag)) return;
        const std::string planned = Core::PropertyValueToString(codec_[tag]);
        if (!found.empty() && planned != found) {
            differences_.push_back(name_ + what + " is " + found + ", not " + planned + " as planned.");
        }
    }

private:
    std::string name_;
    const Property& codec_;
    std::vector<std::string>& differences_;
};

[[noreturn]] void ThrowStreams(const std::string& wrote) {
    throw NotAcceptable({.code = ProblemCode::NoSuchStream, .message = "ffmpeg wrote " + wrote + "."});
}

}  // namespace

void CheckInstalled(const Plan& plan) {
    if (!FFWrapper::MuxerExists(plan.muxer)) {
        throw NotAcceptable({.code = ProblemCode::NotInstalled,
                             .message = "The installed FFmpeg cannot write the container " + plan.container + "."});
    }
    for (const PlannedStream& stream : plan.streams) {
        if (stream.isCopied || !stream.encoder.empty()) continue;
        throw NotAcceptable({.code = ProblemCode::NotInstalled,
                             .message = "The installed FFmpeg has no encoder for " + stream.codecId + ".",
                             .path = stream.path,
                             .value = stream.codecId,
                             .wayOut = "take another codec"});
    }
}

MediaInfo ProbeOutput(const Plan& plan, const std::string& path) {
    MediaInfo written = Probe(path, {.picture = plan.IsPicture() ? plan.streams.front().codecId : std::string()});
    std::erase_if(written.streams, [](const MediaStream& stream) { return !stream.type; });
    return written;
}

std::optional<double> ExpectedDuration(const Plan& plan, const Excerpt& excerpt) {
    if (plan.IsPicture() || plan.input.isDurationGuessed) return std::nullopt;
    double longest = 0.0;
    bool isKnown = true;
    for (const PlannedStream& stream : plan.streams) {
        if (stream.source.isCover) continue;
        isKnown = isKnown && stream.source.duration.has_value();
        longest = std::max(longest, stream.source.duration.value_or(0.0));
    }
    if (isKnown && longest > 0.0) return excerpt.Of(longest);
    // The file is as long as its longest stream, and that may be one that is left out.
    const auto isLeft = [&plan](const MediaStream& stream) {
        const auto isThis = [&stream](const PlannedStream& planned) { return planned.source.index == stream.index; };
        return stream.type && !stream.isCover && std::ranges::none_of(plan.streams, isThis);
    };
    if (std::ranges::any_of(plan.input.streams, isLeft) || !plan.input.duration) return std::nullopt;
    return excerpt.Of(plan.input.duration);
}

std::string Shortfall(const Plan& plan, const MediaInfo& written, const Excerpt& excerpt) {
    const std::optional<double> expected = ExpectedDuration(plan, excerpt);
    if (!expected || !written.duration || written.isDurationGuessed) return {};
    // The last picture and the padding of sound are counted differently by every container.
    const double margin = 0.5 + 0.01 * *expected;
    if (*written.duration >= *expected - margin) return {};
    char text[64];
    std::snprintf(text, sizeof text, "%.1f s of %.1f s", *written.duration, *expected);
    return text;
}

std::vector<std::string> Differences(const Plan& plan, const MediaInfo& written) {
    if (written.isEmpty) ThrowStreams("a file with nothing in it: no picture and no sound came through");
    if (written.streams.size() != plan.streams.size()) {
        ThrowStreams(std::to_string(written.streams.size()) + " streams instead of " +
                     std::to_string(plan.streams.size()));
    }
    std::vector<std::string> differences;
    // Some muxers write the sound first.
    std::vector<bool> taken(written.streams.size(), false);
    for (std::size_t i = 0; i < plan.streams.size(); ++i) {
        const PlannedStream& planned = plan.streams[i];
        std::size_t found = 0;
        const auto isPlanned = [&](const MediaStream& stream) {
            return stream.type == planned.kind->type && (stream.isCover == planned.source.isCover || plan.IsPicture());
        };
        while (found < taken.size() && (taken[found] || !isPlanned(written.streams[found]))) ++found;
        if (found == taken.size()) ThrowStreams("no " + planned.kind->typeId + " stream for " + planned.path);
        taken[found] = true;
        const MediaStream& stream = written.streams[found];
        const Property& codec = plan.CodecSettings(i);
        Comparison compare(i, codec, differences);
        if (FFWrapper::DescriptorName(planned.codecId) != stream.codec) {
            compare.Of("codec", Conf::IFormatCodec::TAG_CODEC_ID, stream.codec);
        }
        const std::string language = FFWrapper::LanguageFor(plan.muxer, planned.source.language);
        if (FFWrapper::MuxerRecord::Find(plan.muxer).hasLanguages && !language.empty() && language != "und" &&
            !planned.source.isCover && stream.language != language) {
            differences.push_back("Stream " + std::to_string(i) + ": the language " + Printable(language) +
                                  " was not kept.");
        }
        if (planned.kind->type == StreamType::Video) {
            compare.Of("width", IFormatCodecVideo::TAG_WIDTH, Known(stream.width));
            compare.Of("height", IFormatCodecVideo::TAG_HEIGHT, Known(stream.height));
            const bool hasRate = stream.fps > boost::rational<int64_t>(0) && !stream.isCover && !plan.IsPicture();
            const bool isOther = hasRate && !IsSameRate(codec[IFormatCodecVideo::TAG_FPS].GetRatio(), stream.fps);
            compare.Of("frame rate", IFormatCodecVideo::TAG_FPS, isOther ? RatioText(stream.fps) : std::string());
        } else if (planned.kind->type == StreamType::Audio) {
            compare.Of("sample rate", IFormatCodecAudio::TAG_SAMPLE_RATE, Known(stream.sampleRate));
            // AC-3 does not tell speakers behind from those at the side.
            const bool isSame = planned.codecId == IFormatCodecAudio::CODEC_ID_AC3 &&
                                Channels(codec[IFormatCodecAudio::TAG_LAYOUT].GetString()) == Channels(stream.layout);
            if (!isSame) compare.Of("layout", IFormatCodecAudio::TAG_LAYOUT, stream.layout);
        }
    }
    return differences;
}

}  // namespace Kestro::Planner
