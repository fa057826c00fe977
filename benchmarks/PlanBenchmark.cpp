#include <benchmark/benchmark.h>

#include "Kestro/Conf/StreamType.h"
#include "Kestro/Planner/FfmpegCommands.h"
#include "Kestro/Planner/Json.h"
#include "Kestro/Planner/MakePlan.h"

namespace {

using Kestro::Conf::StreamType;
using Kestro::Planner::MediaInfo;
using Kestro::Planner::MediaStream;
using Kestro::Planner::Preset;

MediaInfo Film() {
    MediaStream video{.index = 0, .type = StreamType::Video, .codec = "h264"};
    video.width = 1920;
    video.height = 1080;
    video.fps = 25;
    MediaStream audio{.index = 1, .type = StreamType::Audio, .codec = "aac"};
    audio.sampleRate = 48000;
    audio.layout = "stereo";
    audio.sampleFormat = "fltp";
    return {.path = "film.mp4", .demuxer = "mov,mp4,m4a,3gp,3g2,mj2", .duration = 5400.0, .streams = {video, audio}};
}

/// Two streams from what is known of a file to the settings of its conversion; the file is not looked at.
void PlanTwoStreams(benchmark::State& state) {
    const MediaInfo film = Film();
    const Preset preset = Preset::OfContainer("mp4");
    for (auto _ : state) benchmark::DoNotOptimize(Kestro::Planner::MakePlan(film, preset));
}
BENCHMARK(PlanTwoStreams);

void CheckPreset(benchmark::State& state) {
    const Preset preset = Preset::OfContainer("mp4");
    for (auto _ : state) benchmark::DoNotOptimize(Kestro::Planner::Check(preset));
}
BENCHMARK(CheckPreset);

void CommandsOfAPlan(benchmark::State& state) {
    const auto plan = Kestro::Planner::MakePlan(Film(), Preset::OfContainer("mp4"));
    for (auto _ : state) benchmark::DoNotOptimize(Kestro::Planner::FfmpegCommands(plan, "out.mp4"));
}
BENCHMARK(CommandsOfAPlan);

}  // namespace
