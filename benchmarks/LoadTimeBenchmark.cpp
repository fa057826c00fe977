// What loading the library costs a program that has everything it depends on already.

#include <benchmark/benchmark.h>
#include <dlfcn.h>
#include <link.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Microseconds = std::chrono::duration<double, std::micro>;

/// Loads everything that the library depends on, and keeps it. The library itself is not loaded afterwards.
bool LoadDependencies() {
    void* library = dlopen(KESTRO_DATAHELPERS, RTLD_NOW);
    if (library == nullptr) return false;
    link_map* loaded = nullptr;
    if (dlinfo(library, RTLD_DI_LINKMAP, &loaded) != 0) return false;
    // What the library brought stands behind it.
    for (loaded = loaded->l_next; loaded != nullptr; loaded = loaded->l_next) {
        if (dlopen(loaded->l_name, RTLD_NOW) == nullptr) return false;
    }
    dlclose(library);
    return true;
}

bool IsLoaded() {
    void* library = dlopen(KESTRO_DATAHELPERS, RTLD_NOW | RTLD_NOLOAD);
    if (library != nullptr) dlclose(library);
    return library != nullptr;
}

double Median(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Takes in the relocations (RTLD_NOW) and the building of the registry.
void LoadLibrary(benchmark::State& state) {
    if (!LoadDependencies()) {
        state.SkipWithError(dlerror());
        return;
    }
    std::vector<double> loads;
    std::vector<double> unloads;
    for (auto _ : state) {
        if (IsLoaded()) {
            state.SkipWithError("the library was not unloaded");
            break;
        }
        const auto start = Clock::now();
        void* library = dlopen(KESTRO_DATAHELPERS, RTLD_NOW);
        const auto end = Clock::now();
        if (library == nullptr) {
            state.SkipWithError(dlerror());
            break;
        }
        dlclose(library);
        unloads.push_back(Microseconds(Clock::now() - end).count());
        loads.push_back(Microseconds(end - start).count());
        state.SetIterationTime(std::chrono::duration<double>(end - start).count());
    }
    if (loads.empty()) return;
    state.counters["load_min_us"] = *std::min_element(loads.begin(), loads.end());
    state.counters["load_median_us"] = Median(loads);
    state.counters["unload_median_us"] = Median(unloads);
}
BENCHMARK(LoadLibrary)->Name("load the library")->UseManualTime()->Unit(benchmark::kMicrosecond);

}  // namespace
