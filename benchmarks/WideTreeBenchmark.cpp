// The settings tree beside JSON's where one node has ten thousand children.

#include <benchmark/benchmark.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "Kestro/Core/Property.h"

namespace {

using Kestro::Core::Property;
using nlohmann::ordered_json;

const std::vector<std::string> kNames = [] {
    std::vector<std::string> names(10'000);
    for (std::size_t i = 0; i < names.size(); ++i) names[i] = "Setting" + std::to_string(i);
    return names;
}();

struct OurTree {
    static Property Build() {
        Property tree;
        for (const std::string& name : kNames) tree.SetChild(name, 1);
        return tree;
    }
    static int64_t Find(const Property& tree, const std::string& name) { return tree[name].GetInt64(); }
};

struct JsonTree {
    static ordered_json Build() {
        ordered_json tree;
        for (const std::string& name : kNames) tree[name] = 1;
        return tree;
    }
    static int64_t Find(const ordered_json& tree, const std::string& name) { return tree.at(name).get<int64_t>(); }
};

template <class Contestant>
void Build(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(Contestant::Build());
}

template <class Contestant>
void Copy(benchmark::State& state) {
    const auto tree = Contestant::Build();
    for (auto _ : state) {
        auto copy(tree);
        benchmark::DoNotOptimize(copy);
    }
}

template <class Contestant>
void Compare(benchmark::State& state) {
    const auto tree = Contestant::Build();
    const auto other = Contestant::Build();
    if (tree != other) state.SkipWithError("equal trees do not compare equal");
    for (auto _ : state) benchmark::DoNotOptimize(tree == other);
}

/// Every sixteenth of the children.
template <class Contestant>
void Lookup(benchmark::State& state) {
    const auto tree = Contestant::Build();
    std::size_t at = 0;
    for (auto _ : state) {
        if (Contestant::Find(tree, kNames[at]) != 1) state.SkipWithError("this is not the child");
        at = (at + 16) % kNames.size();
    }
}

BENCHMARK(Build<OurTree>)->Name("build a wide tree/Property");
BENCHMARK(Build<JsonTree>)->Name("build a wide tree/ordered_json");
BENCHMARK(Copy<OurTree>)->Name("copy a wide tree/Property");
BENCHMARK(Copy<JsonTree>)->Name("copy a wide tree/ordered_json");
BENCHMARK(Compare<OurTree>)->Name("compare wide trees/Property");
BENCHMARK(Compare<JsonTree>)->Name("compare wide trees/ordered_json");
BENCHMARK(Lookup<OurTree>)->Name("look up in a wide tree/Property");
BENCHMARK(Lookup<JsonTree>)->Name("look up in a wide tree/ordered_json");

}  // namespace
