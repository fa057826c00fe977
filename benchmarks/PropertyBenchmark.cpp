// The settings tree beside two trees of common use. Every tree holds what the Matroska helper gives as its default
// settings, and every contestant does each task in the quickest way that a user of it would write.

#include <benchmark/benchmark.h>

#include <boost/property_tree/ptree.hpp>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>

#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Core/Property.h"
#include "Kestro/Core/PropertyValueToString.h"

namespace {

using boost::property_tree::ptree;
using Kestro::PropertyTypes;
using Kestro::Conf::IFormatCodec;
using Kestro::Conf::IFormatCodecAudio;
using Kestro::Conf::IFormatCodecSubtitle;
using Kestro::Conf::IFormatCodecVideo;
using Kestro::Conf::IFormatFile;
using Kestro::Conf::IPreset;
using Kestro::Core::Property;
using nlohmann::ordered_json;

constexpr int64_t kMostTracks = 16;
const std::string kMostTracksText = "16";

Property MatroskaSettings() {
    return CreateDataHelper(IPreset::KEY_FORMAT, IFormatFile::FORMAT_MATROSKA)->GetDefaultSettings();
}

struct OurTree {
    using Tree = Property;

    static Tree Build() {
        Tree tree(IPreset::KEY_FORMAT);
        tree.SetChild(IFormatFile::TAG_CONTAINER, IFormatFile::FORMAT_MATROSKA);
        tree.SetChild(IFormatCodec::TAG_GLOBAL_HEADER, true);
        Tree& limits = tree.SetChild(IFormatFile::TAG_LIMITS);
        limits.SetChild(IFormatFile::TAG_LIMITS_VIDEO, 1);
        limits.SetChild(IFormatFile::TAG_LIMITS_AUDIO, kMostTracks);
        limits.SetChild(IFormatFile::TAG_LIMITS_SUBTITLE, kMostTracks);
        limits.SetChild(IFormatFile::TAG_LIMITS_OTHER, kMostTracks);
        Tree& streams = tree.SetChild(IPreset::KEY_STREAMS);
        const auto add = [&](const char* name, const std::string& type, const std::string& key, const std::string& id) {
            Tree& stream = streams.SetChild(name);
            stream.SetChild(IPreset::KEY_TYPE_ID, type);
            stream.SetChild(key).SetChild(IFormatCodec::TAG_CODEC_ID, id);
        };
        add("0", IPreset::STREAM_TYPE_VIDEO, IPreset::KEY_FILTER_VIDEO_CODEC, IFormatCodecVideo::CODEC_ID_H264);
        add("1", IPreset::STREAM_TYPE_AUDIO, IPreset::KEY_FILTER_AUDIO_CODEC, IFormatCodecAudio::CODEC_ID_AAC);
        add("2", IPreset::STREAM_TYPE_SUBTITLES_TEXT, IPreset::KEY_FILTER_SUBTITLE_CODEC,
            IFormatCodecSubtitle::CODEC_ID_DVB_SUBTITLE);
        return tree;
    }

    static Tree Expected(const Property& settings) { return settings; }
};

/// The streams are an array, as JSON has it.
struct JsonTree {
    using Tree = ordered_json;

    static Tree Build() {
        Tree tree;
        tree[IFormatFile::TAG_CONTAINER] = IFormatFile::FORMAT_MATROSKA;
        tree[IFormatCodec::TAG_GLOBAL_HEADER] = true;
        Tree& limits = tree[IFormatFile::TAG_LIMITS];
        limits[IFormatFile::TAG_LIMITS_VIDEO] = 1;
        limits[IFormatFile::TAG_LIMITS_AUDIO] = kMostTracks;
        limits[IFormatFile::TAG_LIMITS_SUBTITLE] = kMostTracks;
        limits[IFormatFile::TAG_LIMITS_OTHER] = kMostTracks;
        Tree& streams = tree[IPreset::KEY_STREAMS];
        const auto add = [&](const std::string& type, const std::string& key, const std::string& id) {
            Tree& stream = streams.emplace_back();
            stream[IPreset::KEY_TYPE_ID] = type;
            stream[key][IFormatCodec::TAG_CODEC_ID] = id;
        };
        add(IPreset::STREAM_TYPE_VIDEO, IPreset::KEY_FILTER_VIDEO_CODEC, IFormatCodecVideo::CODEC_ID_H264);
        add(IPreset::STREAM_TYPE_AUDIO, IPreset::KEY_FILTER_AUDIO_CODEC, IFormatCodecAudio::CODEC_ID_AAC);
        add(IPreset::STREAM_TYPE_SUBTITLES_TEXT, IPreset::KEY_FILTER_SUBTITLE_CODEC,
            IFormatCodecSubtitle::CODEC_ID_DVB_SUBTITLE);
        return tree;
    }

    static Tree Expected(const Property& node) {
        switch (node.Type()) {
            case PropertyTypes::Bool:
                return node.GetBool();
            case PropertyTypes::Int64:
                return node.GetInt64();
            case PropertyTypes::String:
                return node.GetString();
            default:
                break;
        }
        Tree tree;
        for (const Property& child : node) {
            if (node.Name() == IPreset::KEY_STREAMS) {
                tree.push_back(Expected(child));
            } else {
                tree[child.Name()] = Expected(child);
            }
        }
        return tree;
    }
};

/// Every value is a text.
struct TextTree {
    using Tree = ptree;

    static Tree Build() {
        const auto append = [](Tree& parent, const std::string& name, const std::string& value) {
            parent.push_back({name, Tree(value)});
        };
        const auto appendNode = [](Tree& parent, const std::string& name) -> Tree& {
            return parent.push_back({name, Tree()})->second;
        };
        Tree tree;
        append(tree, IFormatFile::TAG_CONTAINER, IFormatFile::FORMAT_MATROSKA);
        append(tree, IFormatCodec::TAG_GLOBAL_HEADER, "true");
        Tree& limits = appendNode(tree, IFormatFile::TAG_LIMITS);
        append(limits, IFormatFile::TAG_LIMITS_VIDEO, "1");
        append(limits, IFormatFile::TAG_LIMITS_AUDIO, kMostTracksText);
        append(limits, IFormatFile::TAG_LIMITS_SUBTITLE, kMostTracksText);
        append(limits, IFormatFile::TAG_LIMITS_OTHER, kMostTracksText);
        Tree& streams = appendNode(tree, IPreset::KEY_STREAMS);
        const auto add = [&](const char* name, const std::string& type, const std::string& key, const std::string& id) {
            Tree& stream = appendNode(streams, name);
            append(stream, IPreset::KEY_TYPE_ID, type);
            append(appendNode(stream, key), IFormatCodec::TAG_CODEC_ID, id);
        };
        add("0", IPreset::STREAM_TYPE_VIDEO, IPreset::KEY_FILTER_VIDEO_CODEC, IFormatCodecVideo::CODEC_ID_H264);
        add("1", IPreset::STREAM_TYPE_AUDIO, IPreset::KEY_FILTER_AUDIO_CODEC, IFormatCodecAudio::CODEC_ID_AAC);
        add("2", IPreset::STREAM_TYPE_SUBTITLES_TEXT, IPreset::KEY_FILTER_SUBTITLE_CODEC,
            IFormatCodecSubtitle::CODEC_ID_DVB_SUBTITLE);
        return tree;
    }

    static Tree Expected(const Property& node) {
        Tree tree(Kestro::Core::PropertyValueToString(node));
        for (const Property& child : node) tree.push_back({child.Name(), Expected(child)});
        return tree;
    }
};

template <class Contestant>
void Build(benchmark::State& state) {
    if (Contestant::Build() != Contestant::Expected(MatroskaSettings())) {
        state.SkipWithError("this is not the tree of the Matroska helper");
    }
    for (auto _ : state) benchmark::DoNotOptimize(Contestant::Build());
}

template <class Contestant>
void Copy(benchmark::State& state) {
    const auto tree = Contestant::Expected(MatroskaSettings());
    for (auto _ : state) {
        typename Contestant::Tree copy(tree);
        benchmark::DoNotOptimize(copy);
    }
}

template <class Contestant>
void Compare(benchmark::State& state) {
    const auto tree = Contestant::Expected(MatroskaSettings());
    const auto other = Contestant::Expected(MatroskaSettings());
    if (tree != other) state.SkipWithError("equal trees do not compare equal");
    for (auto _ : state) benchmark::DoNotOptimize(tree == other);
}

/// Reads the id of the audio codec, four levels down.
template <class Contestant, auto kFind>
void Lookup(benchmark::State& state) {
    auto tree = Contestant::Expected(MatroskaSettings());
    if (kFind(tree) != IFormatCodecAudio::CODEC_ID_AAC) state.SkipWithError("this is not the audio codec");
    for (auto _ : state) {
        benchmark::DoNotOptimize(tree);
        const std::string& id = kFind(tree);
        benchmark::DoNotOptimize(&id);
    }
}

// Name by name, each a constant.

const std::string& OurByName(const Property& tree) {
    return tree[IPreset::KEY_STREAMS][1][IPreset::KEY_FILTER_AUDIO_CODEC][IFormatCodec::TAG_CODEC_ID].GetString();
}
const std::string& JsonBySubscript(const ordered_json& tree) {
    return tree[IPreset::KEY_STREAMS][1][IPreset::KEY_FILTER_AUDIO_CODEC][IFormatCodec::TAG_CODEC_ID]
        .get_ref<const std::string&>();
}
const std::string& JsonByAt(const ordered_json& tree) {
    return tree.at(IPreset::KEY_STREAMS)
        .at(1)
        .at(IPreset::KEY_FILTER_AUDIO_CODEC)
        .at(IFormatCodec::TAG_CODEC_ID)
        .get_ref<const std::string&>();
}
const std::string& TextByName(const ptree& tree) {
    return std::next(tree.find(IPreset::KEY_STREAMS)->second.begin())
        ->second.find(IPreset::KEY_FILTER_AUDIO_CODEC)
        ->second.find(IFormatCodec::TAG_CODEC_ID)
        ->second.data();
}

// By the whole path; what can be made of it beforehand is.

const std::string& OurByPath(const Property& tree) {
    static const std::string kPath = "Streams/1/AudioCodec/CodecId";
    return tree.ChildByPath(kPath).GetString();
}
const std::string& OurByType(const Property& tree) {
    static const std::string kPath = "Streams/TypeId=audio/AudioCodec/CodecId";
    return tree.ChildByPath(kPath).GetString();
}
const std::string& JsonByPath(const ordered_json& tree) {
    static const ordered_json::json_pointer kPath("/Streams/1/AudioCodec/CodecId");
    return tree.at(kPath).get_ref<const std::string&>();
}
const std::string& TextByPath(const ptree& tree) {
    static const ptree::path_type kPath("Streams.1.AudioCodec.CodecId");
    return tree.get_child(kPath).data();
}

BENCHMARK(Build<OurTree>)->Name("build a tree/Property");
BENCHMARK(Build<JsonTree>)->Name("build a tree/ordered_json");
BENCHMARK(Build<TextTree>)->Name("build a tree/property_tree");

BENCHMARK(Copy<OurTree>)->Name("copy a tree/Property");
BENCHMARK(Copy<JsonTree>)->Name("copy a tree/ordered_json");
BENCHMARK(Copy<TextTree>)->Name("copy a tree/property_tree");

BENCHMARK(Compare<OurTree>)->Name("compare equal trees/Property");
BENCHMARK(Compare<JsonTree>)->Name("compare equal trees/ordered_json");
BENCHMARK(Compare<TextTree>)->Name("compare equal trees/property_tree");

BENCHMARK(Lookup<OurTree, OurByName>)->Name("look up by names/Property");
BENCHMARK(Lookup<JsonTree, JsonBySubscript>)->Name("look up by names/ordered_json unchecked []");
BENCHMARK(Lookup<JsonTree, JsonByAt>)->Name("look up by names/ordered_json checked at()");
BENCHMARK(Lookup<TextTree, TextByName>)->Name("look up by names/property_tree unchecked find()");

BENCHMARK(Lookup<OurTree, OurByPath>)->Name("look up a path/Property");
BENCHMARK(Lookup<OurTree, OurByType>)->Name("look up a path/Property by the type of stream");
BENCHMARK(Lookup<JsonTree, JsonByPath>)->Name("look up a path/ordered_json");
BENCHMARK(Lookup<TextTree, TextByPath>)->Name("look up a path/property_tree");

}  // namespace
