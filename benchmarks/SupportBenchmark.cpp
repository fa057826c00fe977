#include <benchmark/benchmark.h>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include <string>
#include <vector>

#include "Kestro/Conf/CodecKinds.h"
#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/DataHelpers/GlobalHeaderFunctions.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"

#include "Allocations.h"

// Whether a container stores a codec, asked of every container and codec in turn.

namespace {

using namespace Kestro::Conf;
using Kestro::Core::Property;

std::vector<std::string> Containers() {
    std::vector<std::string> names;
    for (const auto& [name, helper] : GetAvailableDataHelpers(IPreset::KEY_FORMAT)) names.push_back(name);
    return names;
}

std::vector<std::string> Codecs() {
    std::vector<std::string> ids;
    for (const std::string& id : VideoCodecIds()) ids.push_back(id);
    for (const std::string& id : AudioCodecIds()) ids.push_back(id);
    return ids;
}

void AskLibrary(benchmark::State& state) {
    std::vector<boost::intrusive_ptr<const IFormatFile>> files;
    for (const std::string& name : Containers()) {
        Property node;
        node.SetChild(IFormatFile::TAG_CONTAINER, name);
        files.push_back(IFormatFile::Create(node));
    }
    std::vector<boost::intrusive_ptr<const IFormatCodec>> codecs;
    for (const std::string& id : Codecs()) {
        Property node;
        node.SetChild(IFormatCodec::TAG_CODEC_ID, id);
        node.SetChild(IFormatCodec::TAG_CODEC_TAG, 0);
        if (IsAudioCodec(id)) {
            codecs.emplace_back(IFormatCodecAudio::Create(node));
        } else {
            codecs.emplace_back(IFormatCodecVideo::Create(node));
        }
    }
    const int64_t allocations = AllocationCount();
    int64_t queries = 0;
    for (auto _ : state) {
        for (const auto& file : files) {
            for (const auto& codec : codecs) benchmark::DoNotOptimize(CodecIsSupported(file, codec));
        }
        queries += static_cast<int64_t>(files.size() * codecs.size());
    }
    state.SetItemsProcessed(queries);
    state.counters["allocations"] = static_cast<double>(AllocationCount() - allocations) / static_cast<double>(queries);
    state.counters["query"] = benchmark::Counter(static_cast<double>(queries) / 1e9,
                                                 benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(AskLibrary)->Name("codec in a container/CodecIsSupported")->Unit(benchmark::kMicrosecond);

void AskFfmpeg(benchmark::State& state) {
    const std::vector<std::string> containers = Containers();
    const std::vector<std::string> codecs = Codecs();
    int64_t queries = 0;
    for (auto _ : state) {
        for (const std::string& container : containers) {
            for (const std::string& codec : codecs) {
                const AVOutputFormat* muxer = av_guess_format(container.c_str(), nullptr, nullptr);
                const AVCodecDescriptor* descriptor = avcodec_descriptor_get_by_name(codec.c_str());
                benchmark::DoNotOptimize(muxer != nullptr &&
                                         avformat_query_codec(muxer, descriptor->id, FF_COMPLIANCE_NORMAL) == 1);
            }
        }
        queries += static_cast<int64_t>(containers.size() * codecs.size());
    }
    state.SetItemsProcessed(queries);
    state.counters["query"] = benchmark::Counter(static_cast<double>(queries) / 1e9,
                                                 benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(AskFfmpeg)->Name("codec in a container/avformat_query_codec")->Unit(benchmark::kMicrosecond);

}  // namespace
