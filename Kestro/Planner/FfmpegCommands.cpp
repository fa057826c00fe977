#include "Kestro/Planner/FfmpegCommands.h"

#include <algorithm>
#include <cstdio>

#include "Kestro/Conf/DiscRecord.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/FFWrapper/Demuxers.h"
#include "Kestro/FFWrapper/MuxerNames.h"
#include "Kestro/FFWrapper/MuxerRecord.h"
#include "Kestro/Planner/EncoderOptions.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/PicturePattern.h"
#include "Kestro/Planner/Probe.h"
#include "Kestro/Planner/Text.h"
#include "Kestro/Planner/Tree.h"

namespace Kestro::Planner {
namespace {

/// A name in which the muxer finds no number.
std::string EscapedPattern(const std::string& name) {
    std::string escaped;
    for (const char c : name) escaped += c == '%' ? "%%" : std::string(1, c);
    return escaped;
}

std::string Seconds(double seconds) {
    char text[64];
    std::snprintf(text, sizeof text, "%.6f", seconds);
    return text;
}

Command InputArguments(const Plan& plan, const CommandOptions& options) {
    // Which other files it opens, ffmpeg tells at no lower level.
    const bool opensOthers = FFWrapper::OpensOtherFiles(plan.input.demuxer);
    Command arguments{"-hide_banner"};
    if (options.isWatched) {
        arguments.insert(arguments.end(), {"-nostdin", "-y", "-loglevel", opensOthers ? "level+debug" : "level+error",
                                           "-progress", "pipe:1", "-stats_period", "0.2"});
    }
    // Nothing of what the file may ask for: no network, no other demuxer than the one that the input was seen with.
    arguments.insert(arguments.end(),
                     {"-protocol_whitelist", "file", "-f", FFWrapper::DemuxerOption(plan.input.demuxer)});
    // Some files tell when a frame is decoded, but not when it is shown, and a copy is to tell that.
    if (!FFWrapper::MuxerRecord::Find(plan.input.demuxer).hasTimestamps) {
        arguments.insert(arguments.end(), {"-fflags", "+genpts"});
    }
    const std::string& path = options.input.empty() ? plan.input.path : options.input;
    std::string url = FileUrl(path);
    if (const auto& sequence = plan.input.sequence) {
        arguments.insert(arguments.end(), {"-pattern_type", "sequence", "-framerate", RatioText(sequence->fps),
                                           "-start_number", std::to_string(sequence->first)});
        url = PicturePattern(path).Url();
    } else if (FFWrapper::IsImageMuxer(plan.input.demuxer)) {
        arguments.insert(arguments.end(), {"-pattern_type", "none"});
    }
    if (options.excerpt.start > 0.0) arguments.insert(arguments.end(), {"-ss", Seconds(options.excerpt.start)});
    if (options.excerpt.duration) arguments.insert(arguments.end(), {"-t", Seconds(*options.excerpt.duration)});
    arguments.insert(arguments.end(), {"-i", url});
    return arguments;
}

/// Whether a stream is a cover that the output has as a file.
bool IsAttached(const Plan& plan, const PlannedStream& stream) {
    return stream.source.isCover && stream.isCopied && FFWrapper::MuxerRecord::Find(plan.muxer).attachesCovers;
}

/// Where a cover that is attached waits; the first has the name by which players know it.
std::string CoverFile(const Plan& plan, std::size_t index, const std::string& folder) {
    const auto before = std::count_if(plan.streams.begin(), plan.streams.begin() + static_cast<std::ptrdiff_t>(index),
                                      [&](const PlannedStream& stream) { return IsAttached(plan, stream); });
    return folder + "/cover" + (before == 0 ? "" : "_" + std::to_string(before + 1)) + "." +
           FFWrapper::PictureExtension(plan.streams[index].codecId);
}

/// Options of a stream that is copied, or of subtitles.
void AddPlainOptions(const Plan& plan, const PlannedStream& stream, const std::string& suffix, Command& arguments) {
    arguments.insert(arguments.end(), {"-map", "0:" + std::to_string(stream.source.index), "-c" + suffix,
                                       stream.isCopied ? "copy" : stream.encoder});
    if (stream.source.isCover) arguments.insert(arguments.end(), {"-disposition" + suffix, "attached_pic"});
    const std::string filter = FFWrapper::BitstreamFilter(plan.muxer, stream.codecId);
    if (stream.isCopied && !filter.empty()) arguments.insert(arguments.end(), {"-bsf" + suffix, filter});
    // What a frame's time is counted in where a file has no other clock.
    const bool isFilm = stream.kind->type == Conf::StreamType::Video && !stream.source.isCover;
    if (isFilm && stream.source.fps > boost::rational<int64_t>(0) &&
        !FFWrapper::MuxerRecord::Find(plan.muxer).hasTimestamps) {
        arguments.insert(arguments.end(), {"-r" + suffix, RatioText(stream.source.fps)});
    }
}

void AddStreamOptions(const Plan& plan, std::size_t index, const Pass& pass, Command& arguments) {
    const PlannedStream& stream = plan.streams[index];
    const std::string suffix = ":" + std::to_string(index);
    if (stream.isCopied || !stream.kind->HasHelpers()) {
        AddPlainOptions(plan, stream, suffix, arguments);
    } else {
        AddEncoderOptions(plan, index, index, pass, arguments);
    }
    const std::string language = FFWrapper::LanguageFor(plan.muxer, stream.source.language);
    if (language != stream.source.language) {
        arguments.insert(arguments.end(), {"-metadata:s" + suffix, "language=" + language});
    }
    if (!stream.source.title.empty() && FFWrapper::MuxerRecord::Find(plan.muxer).namesTracks) {
        arguments.insert(arguments.end(), {"-metadata:s" + suffix, "handler_name=" + stream.source.title});
    }
}

std::vector<Command> MakeCommands(const Plan& plan, const std::string& output, const CommandOptions& options) {
    std::vector<Command> commands;
    CommandOptions whole = options;
    whole.excerpt = {};
    for (std::size_t i = 0; i < plan.streams.size(); ++i) {
        if (!IsAttached(plan, plan.streams[i])) continue;
        Command& cover = commands.emplace_back(InputArguments(plan, whole));
        cover.insert(cover.end(),
                     {"-map", "0:" + std::to_string(plan.streams[i].source.index), "-c", "copy", "-frames:v", "1",
                      "-update", "1", "-f", "image2", "-y", FileUrl(CoverFile(plan, i, options.workFolder))});
    }
    const bool twoPass = Planner::IsTwoPass(plan);
    if (twoPass) {
        Command& first = commands.emplace_back(InputArguments(plan, options));
        std::size_t index = 0;
        for (std::size_t i = 0; i < plan.streams.size(); ++i) {
            if (IsTwoPass(plan.CodecSettings(i))) {
                AddEncoderOptions(plan, i, index++, {1, options.workFolder}, first);
            }
        }
        // The same muxer chooses the same frames; FFmpeg's null muxer may keep others.
        first.insert(first.end(), {"-f", plan.muxer, "-y", "/dev/null"});
    }
    Command& last = commands.emplace_back(InputArguments(plan, options));
    const Pass pass = twoPass ? Pass{2, options.workFolder} : Pass{};
    for (std::size_t i = 0; i < plan.streams.size(); ++i) {
        if (!IsAttached(plan, plan.streams[i])) AddStreamOptions(plan, i, pass, last);
    }
    // Told of one, FFmpeg leaves the marks of the others as they are in the input.
    if (plan.streams.size() > 1) last.insert(last.end(), {"-disposition:0", "+default"});
    for (const int attachment : plan.attachments) {
        last.insert(last.end(), {"-map", "0:" + std::to_string(attachment), "-c:t", "copy"});
    }
    std::size_t attached = plan.attachments.size();
    for (std::size_t i = 0; i < plan.streams.size(); ++i) {
        if (!IsAttached(plan, plan.streams[i])) continue;
        last.insert(last.end(), {"-attach", FileUrl(CoverFile(plan, i, options.workFolder)),
                                 "-metadata:s:t:" + std::to_string(attached++),
                                 "mimetype=" + FFWrapper::CoverMediaType(plan.streams[i].codecId)});
    }
    if (Flag(plan.FormatSettings(), Conf::IFormatFile::TAG_PROGRESSIVE_READ) &&
        FFWrapper::MuxerRecord::Find(plan.muxer).hasMovableIndex) {
        last.insert(last.end(), {"-movflags", "+faststart"});
    }
    if (options.isSequence) {
        const std::string extension = FFWrapper::PictureExtension(plan.streams.front().codecId);
        last.insert(last.end(), {"-f", plan.muxer, FileUrl(EscapedPattern(output) + "/%06d." + extension)});
        return commands;
    }
    // The one picture goes under the name as it is, whatever pattern it may look like.
    if (plan.IsPicture()) last.insert(last.end(), {"-frames:v", "1", "-update", "1"});
    const Conf::DiscRecord* disc = Conf::DiscRecord::Find(plan.FormatSettings());
    if (disc != nullptr && disc->rate > 0) last.insert(last.end(), {"-muxrate", std::to_string(disc->rate)});
    last.insert(last.end(), {"-f", plan.muxer, FileUrl(output)});
    return commands;
}

}  // namespace

std::optional<double> Excerpt::Of(std::optional<double> inputDuration) const {
    if (!inputDuration) return duration;
    const double rest = std::max(0.0, *inputDuration - start);
    return duration ? std::min(*duration, rest) : rest;
}

bool IsTwoPass(const Plan& plan) {
    for (std::size_t i = 0; i < plan.streams.size(); ++i) {
        if (IsTwoPass(plan.CodecSettings(i))) return true;
    }
    return false;
}

bool NeedsWorkFolder(const Plan& plan) {
    return IsTwoPass(plan) ||
           std::ranges::any_of(plan.streams, [&](const PlannedStream& stream) { return IsAttached(plan, stream); });
}

std::string PictureName(const Plan& plan, int number) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%06d.", number);
    return digits + FFWrapper::PictureExtension(plan.streams.front().codecId);
}

std::vector<Command> FfmpegCommands(const Plan& plan, const std::string& output, const CommandOptions& options) {
    try {
        return MakeCommands(plan, output, options);
    } catch (const NotAcceptable&) {
        throw;
    } catch (const Exception& exception) {
        throw NotAcceptable({.code = ProblemCode::InvalidPlan, .message = exception.what()});
    }
}

}  // namespace Kestro::Planner
