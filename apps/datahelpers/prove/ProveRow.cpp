#include "prove/ProveRow.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/LayoutRecord.h"
#include "Kestro/Conf/StreamRecord.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/FFWrapper/EncoderRecord.h"
#include "Kestro/FFWrapper/MuxerNames.h"
#include "Kestro/Planner/Execution.h"
#include "Kestro/Planner/MakePlan.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Probe.h"
#include "Kestro/Planner/Text.h"

#include "cli/Failure.h"
#include "convert/Converter.h"
#include "prove/Decode.h"

namespace App {
namespace {

using Kestro::Conf::IFormatCodecAudio;
using Kestro::Conf::IFormatCodecVideo;
using Kestro::Conf::StreamRecord;
using Kestro::Core::Property;
using Planner::Plan;
using Planner::PlannedStream;

Planner::Preset PresetOf(const Combination& combination) {
    Planner::Preset preset = Planner::Preset::OfContainer(combination.container);
    for (const auto& [type, codec] : combination.codecs) {
        const StreamRecord& kind = StreamRecord::Find(type);
        // Subtitles of the same codec are copied in any case.
        const bool isCopy = combination.isCopy && kind.HasHelpers();
        preset.Set(kind.CodecIdPath(), isCopy ? Planner::Preset::kCopy : codec);
    }
    for (const Planner::Change& setting : combination.settings) preset.Set(setting.path, setting.value);
    return preset;
}

/// What of the combination the plan does not do; empty: it does all.
std::string Unplanned(const Plan& plan, const Combination& combination) {
    for (const auto& entry : combination.codecs) {
        const auto isWanted = [&](const PlannedStream& stream) {
            return stream.kind->type == entry.first &&
                   (combination.isCopy ? stream.isCopied : stream.codecId == entry.second);
        };
        if (std::ranges::any_of(plan.streams, isWanted)) continue;
        if (plan.notes.empty()) return "the plan has no " + std::string(KindName(entry.first)) + " of " + entry.second;
        return Planner::Join(plan.notes);
    }
    for (const Planner::Change& setting : combination.settings) {
        for (const Planner::Correction& correction : plan.corrections) {
            if (correction.path != setting.path) continue;
            const std::string after =
                correction.after ? Kestro::Core::PropertyValueToString(*correction.after) : "nothing";
            return setting.value + " becomes " + after + ": " + correction.reason;
        }
    }
    return {};
}

void Compare(const char* what, const std::string& planned, const std::string& found,
             std::vector<std::string>& differences) {
    if (planned.empty() || found.empty() || planned == found) return;
    differences.push_back(std::string(what) + " " + found + ", not " + planned);
}

/// The colours that the numbers of an encoded picture mean, where the file tells.
void CompareColours(const Plan& plan, const Planner::MediaInfo& written, const Decoded& decoded,
                    std::vector<std::string>& differences) {
    const auto isVideo = [](const Planner::MediaStream& stream) {
        return stream.type == StreamType::Video && !stream.isCover;
    };
    const auto found = std::ranges::find_if(written.streams, isVideo);
    for (const PlannedStream& stream : plan.streams) {
        if (!isVideo(stream.source) || stream.pixels.isToneMapped || found == written.streams.end()) continue;
        const Planner::Colour& source = stream.source.colour;
        Compare("primaries", source.primaries, found->colour.primaries, differences);
        Compare("transfer", source.transfer, found->colour.transfer, differences);
        const bool hasMatrix = std::ranges::any_of(decoded.streams, &Decoded::Stream::hasMatrix);
        const auto* encoder = Kestro::FFWrapper::EncoderRecord::Find(stream.encoder);
        const bool isBt601 = encoder != nullptr && encoder->isBt601;
        if (hasMatrix) Compare("matrix", isBt601 ? "bt470bg" : source.matrix, found->colour.matrix, differences);
    }
}

/// What was decoded: all of it, and what the headers promise.
void CompareDecoded(const Plan& plan, const Decoded& decoded, std::optional<double> expected,
                    std::vector<std::string>& differences) {
    if (!decoded.error.empty()) differences.push_back("decoding says: " + decoded.error);
    for (const StreamRecord& kind : StreamRecord::All()) {
        const auto isThis = [&kind](const Decoded::Stream& stream) { return stream.type == kind.type; };
        const auto found = std::ranges::find_if(decoded.streams, isThis);
        std::size_t planned = 0;
        while (planned < plan.streams.size() && plan.streams[planned].kind != &kind) ++planned;
        if (found == decoded.streams.end() || planned == plan.streams.size()) continue;
        if (found->count == 0) {
            differences.push_back(std::string("nothing of the ") + KindName(kind.type) + " can be decoded");
            continue;
        }
        const Property& codec = plan.CodecSettings(planned);
        const auto number = [&codec](const std::string& tag) {
            const Property* value = codec.FindByPath(tag);
            return value != nullptr ? Kestro::Core::PropertyValueToString(*value) : std::string();
        };
        double rate = 0.0;
        if (kind.type == StreamType::Video) {
            Compare("width", number(IFormatCodecVideo::TAG_WIDTH), std::to_string(found->width), differences);
            Compare("height", number(IFormatCodecVideo::TAG_HEIGHT), std::to_string(found->height), differences);
            const Property* fps = codec.FindByPath(IFormatCodecVideo::TAG_FPS);
            if (fps != nullptr && !plan.streams[planned].source.isCover) {
                rate = boost::rational_cast<double>(fps->GetRatio());
            }
        } else if (kind.type == StreamType::Audio) {
            Compare("sample rate", number(IFormatCodecAudio::TAG_SAMPLE_RATE), std::to_string(found->sampleRate),
                    differences);
            const auto* layout = Kestro::Conf::LayoutRecord::Find(number(IFormatCodecAudio::TAG_LAYOUT));
            if (layout != nullptr) {
                Compare("channels", std::to_string(layout->channels), std::to_string(found->channels), differences);
            }
            rate = static_cast<double>(found->sampleRate);
        }
        if (!expected || rate <= 0.0) continue;
        const double seconds = static_cast<double>(found->count) / rate;
        // Encoders fill up their last block of sound, and a last picture may be counted or not.
        const double margin = kind.type == StreamType::Video ? 2.0 / rate : 0.2;
        if (std::abs(seconds - *expected) <= margin) continue;
        char text[64];
        std::snprintf(text, sizeof text, "%.2f s, not %.2f s", seconds, *expected);
        differences.push_back(std::string(KindName(kind.type)) + " of " + text);
    }
}

/// As one line, without what is another in every run: the folders' names, addresses in memory.
std::string Plainly(std::string text, const std::string& folder) {
    for (const std::string& one : {folder, folder.substr(0, folder.rfind('/'))}) {
        for (std::size_t at = 0; (at = text.find(one)) != std::string::npos;) text.erase(at, one.size() + 1);
    }
    for (std::size_t at = 0; (at = text.find(" @ 0x")) != std::string::npos;) {
        text.erase(at, text.find_first_of("] ", at + 5) - at);
    }
    std::ranges::replace(text, '\n', ' ');
    constexpr std::size_t kLongest = 300;
    if (text.size() > kLongest) text = text.substr(0, kLongest) + " ...";
    return Planner::Printable(text);
}

/// The planner's no.
void Refuse(const Planner::Problem& problem, Proof& proof) {
    const bool isNoEncoder = problem.code == Planner::ProblemCode::NotInstalled;
    proof.verdict = isNoEncoder ? Verdict::NoEncoder : Verdict::Refused;
    if (!isNoEncoder) proof.by = "planner: " + std::string(Planner::ProblemText(problem.code));
    proof.why = problem.message;
    if (proof.why.find(problem.cause) == std::string::npos) proof.why += " " + problem.cause;
}

void CarryOut(const Plan& plan, bool isClip, const std::string& output, Proof& proof) {
    const Conversion made = Convert(plan, output, {.overwrite = true});
    std::vector<std::string> differences = made.differences;
    if (!made.shortfall.empty()) differences.push_back("only " + made.shortfall);
    const Decoded decoded = DecodeToEnd(output, plan.IsPicture() ? plan.streams.front().codecId : std::string());
    CompareColours(plan, made.written, decoded, differences);
    std::optional<double> expected = Planner::ExpectedDuration(plan);
    if (isClip && !plan.IsPicture()) expected = Clips::kSeconds;
    CompareDecoded(plan, decoded, expected, differences);
    if (!made.messages.empty()) differences.push_back("ffmpeg says: " + made.messages.front());
    proof.verdict = differences.empty() ? Verdict::Proven : Verdict::Contradicts;
    proof.why = Planner::Join(differences, "; ");
}

void Try(const Combination& combination, const Clips& clips, const std::string& output, Proof& proof) {
    const Planner::MediaInfo input = Planner::Probe(clips.Find(combination.footage));
    const Plan plan = Planner::MakePlan(input, PresetOf(combination));
    Planner::CheckInstalled(plan);
    for (const PlannedStream& stream : plan.streams) {
        proof.codecs.try_emplace(stream.kind->type, stream.codecId);
        if (stream.isCopied && std::ranges::find(proof.copied, stream.kind->type) == proof.copied.end()) {
            proof.copied.push_back(stream.kind->type);
        }
    }
    proof.why = Unplanned(plan, combination);
    if (!proof.why.empty()) {
        proof.verdict = Verdict::Refused;
        proof.by = "planner: left out or corrected";
        return;
    }
    CarryOut(plan, combination.footage.codec.empty(), output, proof);
}

}  // namespace

Proof Prove(const Combination& combination, const Clips& clips, const Missing& missing, const std::string& folder) {
    Proof proof = ProofOf(combination);
    if (combination.container.empty()) {
        proof.verdict = Verdict::Refused;
        proof.by = "containers";
        proof.why = "no container's helper offers " + combination.codecs.begin()->second;
        return proof;
    }
    if (!missing.why.empty()) {
        proof.verdict = missing.isNoEncoder ? Verdict::NoEncoder : Verdict::Refused;
        proof.by = missing.isNoEncoder ? "" : "ffmpeg";
        proof.why = Plainly(missing.why, folder);
        return proof;
    }
    const std::string output = folder + "/out." + Kestro::FFWrapper::FileExtension(combination.container);
    try {
        Try(combination, clips, output, proof);
    } catch (const Planner::NotAcceptable& refused) {
        Refuse(refused.Problems().front(), proof);
    } catch (const Failure& failure) {
        if (static_cast<int>(failure.Status()) >= 128) throw;
        proof.verdict = Verdict::Contradicts;
        proof.by = "ffmpeg";
        proof.why = failure.Said().message;
    }
    proof.by = Plainly(proof.by, folder);
    proof.why = Plainly(proof.why, folder);
    return proof;
}

}  // namespace App
