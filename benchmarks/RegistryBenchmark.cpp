// Finding a helper.

#include <benchmark/benchmark.h>

#include <string>

#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/HelperException.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Proc/IFilterResize.h"

#include "Allocations.h"

namespace {

using namespace Kestro::Conf;

void Find(benchmark::State& state, const std::string& type, const std::string& name) {
    const int64_t allocations = AllocationCount();
    for (auto _ : state) benchmark::DoNotOptimize(CreateDataHelper(type, name).get());
    state.counters["allocations"] =
        benchmark::Counter(static_cast<double>(AllocationCount() - allocations), benchmark::Counter::kAvgIterations);
}

/// What a failure costs: for information.
void FindNothing(benchmark::State& state, const std::string& type, const std::string& name) {
    for (auto _ : state) {
        try {
            benchmark::DoNotOptimize(CreateDataHelper(type, name).get());
            state.SkipWithError("there is such a helper");
        } catch (const HelperException& exception) {
            benchmark::DoNotOptimize(exception.what());
        }
    }
}

BENCHMARK_CAPTURE(Find, "", IPreset::KEY_FORMAT, IFormatFile::FORMAT_MP4)->Name("find a helper/format mp4");
BENCHMARK_CAPTURE(Find, "", IPreset::KEY_FORMAT, IFormatFile::FORMAT_MATROSKA)->Name("find a helper/format matroska");
BENCHMARK_CAPTURE(Find, "", IPreset::KEY_FILTER_AUDIO_CODEC, IFormatCodecAudio::CODEC_ID_AAC)
    ->Name("find a helper/audio codec aac");
BENCHMARK_CAPTURE(Find, "", IPreset::KEY_FILTER_VIDEO_CODEC, IFormatCodecVideo::CODEC_ID_H264)
    ->Name("find a helper/video codec h264");
BENCHMARK_CAPTURE(Find, "", IFormatCodecVideo::TAG_FORMAT_CODEC_VIDEO, IFormatCodecVideo::CODEC_ID_H264)
    ->Name("find a helper/video codec h264 by the other name of its type");
BENCHMARK_CAPTURE(Find, "", Kestro::Proc::IFilterResize::CLASS_ID, std::string())->Name("find a helper/filter resize");

BENCHMARK_CAPTURE(FindNothing, "", IPreset::KEY_FORMAT, std::string("nothing"))->Name("find no helper/of a type");
BENCHMARK_CAPTURE(FindNothing, "", std::string("nothing"), std::string("nothing"))->Name("find no helper/of no type");

}  // namespace
