#include "cli/PlanArguments.h"

#include <charconv>
#include <cmath>
#include <string>

#include "Kestro/Core/Property.h"
#include "Kestro/Core/PropertyException.h"
#include "Kestro/Planner/Text.h"

#include "cli/Failure.h"

namespace App {
namespace {

/// Seconds, or hours, minutes and seconds with colons.
double ReadSeconds(const std::string& text) {
    double seconds = 0.0;
    const char* at = text.data();
    const char* const end = at + text.size();
    for (int part = 0; part < 3; ++part) {
        double number = 0.0;
        const auto read = std::from_chars(at, end, number, std::chars_format::fixed);
        if (read.ec != std::errc() || !(number >= 0.0) || (part > 0 && number >= 60.0)) break;
        seconds = 60.0 * seconds + number;
        constexpr double kLongest = 1e7;
        if (read.ptr == end && seconds <= kLongest) return seconds;
        if (read.ptr == end || *read.ptr != ':' || seconds != std::floor(seconds)) break;
        at = read.ptr + 1;
    }
    throw Failure(ExitStatus::WrongUsage, Complaint{.message = "\"" + Planner::Printable(text) + "\" is no time.",
                                                    .value = text,
                                                    .wayOut = "seconds, or with colons: 90, 1:30, 0:01:30.5"});
}

/// Pictures per second.
boost::rational<int64_t> ReadRate(const std::string& text) {
    try {
        return Kestro::Core::Property({}, text).GetRatio();
    } catch (const Kestro::Core::PropertyException&) {
        throw Failure(ExitStatus::WrongUsage, Complaint{.message = "\"" + Planner::Printable(text) + "\" is no rate.",
                                                        .value = text,
                                                        .wayOut = "pictures per second: 25, 23.976 or 30000/1001"});
    }
}

}  // namespace

void AddPlanOptions(CLI::App& command, PlanOptions& options) {
    auto* preset =
        command.add_option("--preset", options.presetFile, "A preset: a file, or a name that list presets has")
            ->type_name("PRESET");
    auto* format =
        command
            .add_option("--format", options.format,
                        "The container, with its default settings; without a preset the name of the output tells it")
            ->type_name("FORMAT");
    preset->excludes(format);
    const std::string codec =
        " codec; copy: the input's stream as it is; auto: that where it can be, or the container's default";
    command.add_option("--video", options.video, "The video" + codec)->type_name("CODEC");
    command.add_option("--audio", options.audio, "The audio" + codec)->type_name("CODEC");
    command
        .add_option("--audio-tracks", options.audioTracks,
                    "Which audio tracks: all, none, or by number and language: 1,3 or eng")
        ->type_name("TRACKS");
    command.add_option("--subtitles", options.subtitleTracks, "Which subtitles, likewise")->type_name("TRACKS");
    command.add_flag("--keep-fields", options.keepsFields, "Leave interlaced video interlaced");
    command
        .add_option("--size", options.size,
                    "The output is not larger, and little smaller: bytes, or as 800k, 25M or 1.5G")
        ->type_name("SIZE");
    command
        .add_option("--set", options.sets,
                    "Change a setting; the value follows the last =. The value auto leaves CodecId, RateControl, "
                    "SampleRate, Layout and VideoFrameRate/Fps to the program. May be repeated")
        ->type_name("PATH=VALUE")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
    const auto readTo = [](auto& seconds) {
        return [&seconds](const std::string& text) { seconds = ReadSeconds(text); };
    };
    command
        .add_option_function<std::string>("--start", readTo(options.excerpt.start),
                                          "Leave out what is before: 90, 1:30 or 0:01:30.5")
        ->type_name("TIME");
    command
        .add_option_function<std::string>("--duration", readTo(options.excerpt.duration),
                                          "Take no more than that of the input")
        ->type_name("TIME");
    command
        .add_option_function<std::string>(
            "--fps", [&options](const std::string& text) { options.fps = ReadRate(text); },
            "INPUT is a sequence of pictures, as frames/%06d.png, and so many are shown "
            "a second: 25 or 30000/1001")
        ->type_name("RATE");
    command.add_flag("--follow-references", options.followReferences,
                     "Also read the local files that the input names (a playlist, for instance), and tell which");
}

}  // namespace App
