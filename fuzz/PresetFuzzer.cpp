// Reads bytes as presets and as plans: what is not acceptable is refused by words, and what is planned stays what it
// is.

#include <cstdlib>
#include <string>

#include "Kestro/Planner/FfmpegCommands.h"
#include "Kestro/Planner/Json.h"
#include "Kestro/Planner/MakePlan.h"
#include "Kestro/Planner/NotAcceptable.h"

#include "fuzz/Replay.h"

namespace {

using namespace Kestro::Planner;
using Kestro::Conf::StreamType;

/// Ends the program, for the fuzzer to see.
void Hold(bool law) {
    if (!law) std::abort();
}

MediaInfo Film() {
    MediaStream video{.index = 0, .type = StreamType::Video, .codec = "h264"};
    video.width = 1919;
    video.height = 1080;
    video.fps = {24'000, 1001};
    video.bitDepth = 10;
    video.isInterlaced = true;
    video.hasAlpha = true;
    MediaStream audio{.index = 1, .type = StreamType::Audio, .codec = "aac"};
    audio.sampleRate = 96'000;
    audio.layout = "5.1";
    audio.sampleFormat = "fltp";
    MediaStream text{.index = 2, .type = StreamType::Subtitle, .codec = "subrip", .language = "eng"};
    return {.path = "film.mkv", .demuxer = "matroska,webm", .duration = 60.0, .streams = {video, audio, text}};
}

/// A plan says the same after a journey as JSON, and its command lines are the same.
void HoldToJourney(const Plan& plan) {
    const std::string text = ToJson(plan);
    const Plan arrived = PlanFromJson(text);
    Hold(ToJson(arrived) == text);
    Hold(FfmpegCommands(arrived, "out") == FfmpegCommands(plan, "out"));
}

template <class Work>
void OrRefused(const Work& work) {
    try {
        work();
    } catch (const NotAcceptable& refused) {
        Hold(!refused.Problems().empty());
        for (const Problem& problem : refused.Problems()) Hold(!problem.message.empty());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    OrRefused([&] {
        const Preset preset = Preset::FromJson(text, "preset");
        const bool isWrong = !Check(preset).empty();
        Plan plan;
        try {
            plan = MakePlan(Film(), preset);
        } catch (const NotAcceptable&) {
            return;
        }
        Hold(!isWrong);
        HoldToJourney(plan);
    });
    OrRefused([&] { HoldToJourney(PlanFromJson(text)); });
    return 0;
}
